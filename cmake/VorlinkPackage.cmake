# `cpack` makes a ZIP of what `cmake --install` puts down, with a bill of materials and checksums.
set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${PROJECT_SOURCE_DIR}/cmake/FinishPackage.cmake)
set(CPACK_PACKAGING_INSTALL_PREFIX /)

if(MSVC)
  set(package_platform msvc-x86_64)
else()
  set(package_platform mingw-w64-x86_64)
endif()
set(CPACK_PACKAGE_FILE_NAME vorlink-${PROJECT_VERSION}-${package_platform})

# For the script.
set(CPACK_VORLINK_SOURCE_DIR ${PROJECT_SOURCE_DIR})
set(CPACK_VORLINK_DOC_DIR ${CMAKE_INSTALL_DOCDIR})
set(CPACK_VORLINK_MINGW ${MINGW})
include(CPack)
