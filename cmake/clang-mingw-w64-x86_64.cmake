# The same target by a second compiler: Clang, with the headers, the libraries and the linker of Debian's cross
# compiler. Debian 12's default version, 14, knows too little of C++20.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-x86_64.cmake)

# Clang does not look where Debian keeps them.
execute_process(
  COMMAND ${CMAKE_CXX_COMPILER} -print-libgcc-file-name
  OUTPUT_VARIABLE libgcc
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
cmake_path(GET libgcc PARENT_PATH gcc_folder)
set(gcc_headers ${gcc_folder}/include/c++)

set(CMAKE_C_COMPILER clang-16)
set(CMAKE_CXX_COMPILER clang++-16)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)

# Thread-local variables are emulated, as in the standard library's binary.
set(CMAKE_CXX_FLAGS_INIT
    "-stdlib++-isystem${gcc_headers} -stdlib++-isystem${gcc_headers}/x86_64-w64-mingw32 -femulated-tls")
string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT " -B${gcc_folder} -L${gcc_folder} -pthread")
string(APPEND CMAKE_SHARED_LINKER_FLAGS_INIT " -B${gcc_folder} -L${gcc_folder} -pthread")
