# Runs a program and holds what it prints, and how it ends, against a file.
# Usage: cmake -D program=... -D expected=FILE -P CheckOutput.cmake -- ARGUMENT ...
set(arguments)
set(seen FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(index RANGE ${last})
  if(seen)
    list(APPEND arguments "${CMAKE_ARGV${index}}")
  elseif("${CMAKE_ARGV${index}}" STREQUAL "--")
    set(seen TRUE)
  endif()
endforeach()

execute_process(
  COMMAND ${program} ${arguments}
  OUTPUT_VARIABLE output
  ERROR_VARIABLE errors
  RESULT_VARIABLE code)
string(REPLACE "\r" "" output "${output}")
if(NOT code EQUAL 0)
  string(APPEND output "(ended with ${code})\n")
endif()
file(READ ${expected} wanted)
string(REPLACE "\r" "" wanted "${wanted}")
if(NOT output STREQUAL wanted)
  message(FATAL_ERROR "It said\n${output}and not\n${wanted}${errors}")
endif()
