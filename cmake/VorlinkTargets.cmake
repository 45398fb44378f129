# What every target of the project shares.

# Visual Studio's default, /EHsc, takes for granted that a function with C linkage never throws; getVorlinkPtr may.
if(MSVC)
  string(REPLACE /EHsc /EHs CMAKE_CXX_FLAGS "${CMAKE_CXX_FLAGS}")
endif()

# Warnings, high and as errors, on our own code alone.
add_library(vorlink_warnings INTERFACE)
if(MSVC)
  target_compile_options(vorlink_warnings INTERFACE /W4 /WX /permissive- /utf-8 /bigobj) # templates make many sections
  # Its C library deprecates fopen, localtime, getenv and _open in favour of functions that others do not have.
  target_compile_definitions(vorlink_warnings INTERFACE _CRT_SECURE_NO_WARNINGS)
else()
  # Not here: -Wnon-virtual-dtor. COM interfaces, and Vorlink itself, have no virtual destructor by contract.
  target_compile_options(
    vorlink_warnings
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Werror
              -Wconversion
              -Wsign-conversion
              -Wshadow
              -Wold-style-cast
              -Wcast-qual
              -Wformat=2
              -Wmissing-declarations
              -Woverloaded-virtual)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(
      vorlink_warnings
      INTERFACE -Wduplicated-cond
                -Wlogical-op
                -Wno-restrict) # GCC 12 sees overlaps in std::string's operator+ that are not there
  endif()
endif()

# Includes are written from the project's root: "interface/Vorlink.h".
target_include_directories(vorlink_warnings INTERFACE ${PROJECT_SOURCE_DIR})
if(WIN32)
  target_compile_definitions(vorlink_warnings INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
                                                        _WIN32_WINNT=0x0A00)
endif()

# A host includes the public headers by their installed names, <vorlink/Vorlink.h>, also where nothing is installed.
set(vorlink_public_headers ${PROJECT_SOURCE_DIR}/interface/Vorlink.h ${PROJECT_SOURCE_DIR}/interface/vorlink_c.h
                           ${PROJECT_SOURCE_DIR}/simulator/VorlinkSimulator.h)
foreach(header IN LISTS vorlink_public_headers)
  cmake_path(GET header FILENAME name)
  configure_file(${header} ${PROJECT_BINARY_DIR}/include/vorlink/${name} COPYONLY)
endforeach()
set(vorlink_include_dirs $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>)

# Exposes one folder of header-only library and, to a cross compiler, nothing beside it: /usr/include itself belongs
# to the build machine's own C library.
function(vorlink_header_only_library target folder header)
  find_path(${target}_INCLUDE_DIR ${folder}/${header} REQUIRED NO_CMAKE_FIND_ROOT_PATH)
  set(view ${${target}_INCLUDE_DIR})
  if(CMAKE_CROSSCOMPILING)
    set(view ${CMAKE_BINARY_DIR}/headers/${target})
    file(MAKE_DIRECTORY ${view})
    file(CREATE_LINK ${${target}_INCLUDE_DIR}/${folder} ${view}/${folder} SYMBOLIC)
  endif()
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${view})
endfunction()

# Makes an executable meet the simulated platform: its embedded manifest registers the class in
# vorlink_simulator.dll, which lies beside it.
function(vorlink_embed_simulator_manifest target)
  if(MSVC)
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/simulator/simulator.manifest)
  else()
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/simulator/manifest.rc)
    set_source_files_properties(${PROJECT_SOURCE_DIR}/simulator/manifest.rc
                                PROPERTIES OBJECT_DEPENDS ${PROJECT_SOURCE_DIR}/simulator/simulator.manifest)
  endif()
  add_dependencies(${target} vorlink_simulator)
endfunction()

# Small binaries: what nobody calls and what nobody debugs with stays out of a release.
if(NOT MSVC)
  add_compile_options($<$<CONFIG:Release>:-ffunction-sections> $<$<CONFIG:Release>:-fdata-sections>)
  add_link_options($<$<CONFIG:Release>:-Wl,--gc-sections> $<$<CONFIG:Release>:-s>)
endif()

# The same sources make the same bytes.
if(MINGW)
  add_link_options($<$<CONFIG:Release>:-Wl,--no-insert-timestamp>)
endif()
