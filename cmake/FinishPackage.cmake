# Makes the ZIP of what is to go into it. The same files of the same commit make the same bytes: each file has the
# commit's time, and the archive neither the order of a folder nor the times and the user that a ZIP can tell besides.
set(folder ${CPACK_TEMPORARY_DIRECTORY})
set(package ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.zip)

if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(
    COMMAND git -C ${CPACK_VORLINK_SOURCE_DIR} log -1 --format=%ct
    OUTPUT_VARIABLE commit_time
    OUTPUT_STRIP_TRAILING_WHITESPACE
    RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "No git checkout, so SOURCE_DATE_EPOCH has to say of what time the package is.")
  endif()
  set(ENV{SOURCE_DATE_EPOCH} ${commit_time})
endif()

function(write_checksums file)
  file(GLOB_RECURSE names RELATIVE ${folder} ${folder}/*)
  list(SORT names)
  set(lines "")
  foreach(name IN LISTS names)
    file(SHA256 ${folder}/${name} checksum)
    string(APPEND lines "${checksum}  ${name}\n")
  endforeach()
  file(WRITE ${file} "${lines}")
endfunction()

# Only of Debian's packages is it known what they are.
if(CPACK_VORLINK_MINGW)
  include(${CPACK_VORLINK_SOURCE_DIR}/cmake/BillOfMaterials.cmake)
endif()
write_checksums(${folder}/SHA256SUMS)

file(GLOB_RECURSE files LIST_DIRECTORIES FALSE ${folder}/*)
foreach(file IN LISTS files)
  if(file MATCHES "\\.(exe|dll)$")
    file(CHMOD ${file} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  else()
    file(CHMOD ${file} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  endif()
endforeach()

# The folder that holds everything else, so that to unpack the archive makes one.
get_filename_component(parent ${folder} DIRECTORY)
get_filename_component(top ${folder} NAME)
file(GLOB_RECURSE names RELATIVE ${parent} ${folder}/*)
list(SORT names)
file(REMOVE ${package})
if(CMAKE_HOST_WIN32)
  execute_process(COMMAND ${CMAKE_COMMAND} -E tar cf ${package} --format=zip ${top} WORKING_DIRECTORY ${parent}
                          COMMAND_ERROR_IS_FATAL ANY)
else()
  execute_process(COMMAND touch -d @$ENV{SOURCE_DATE_EPOCH} ${files} COMMAND_ERROR_IS_FATAL ANY)
  list(JOIN names "\n" names)
  file(WRITE ${package}.names "${names}\n")
  set(ENV{TZ} UTC) # a ZIP has local times
  execute_process(
    COMMAND zip -X -q ${package} -@
    INPUT_FILE ${package}.names
    WORKING_DIRECTORY ${parent} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${package}.names)
endif()
set(CPACK_EXTERNAL_BUILT_PACKAGES ${package})
