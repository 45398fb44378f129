# GoogleTest from its source package, built for the target machine.
set(VORLINK_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "GoogleTest's sources, used when no package is found")
find_package(GTest QUIET)
if(NOT GTest_FOUND)
  set(INSTALL_GTEST OFF CACHE BOOL "")
  set(gtest_force_shared_crt ON CACHE BOOL "")
  add_subdirectory(${VORLINK_GOOGLETEST_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endif()
include(GoogleTest)

# Tests run for milliseconds and are built often: in every configuration they are compiled for a quick build. Without
# any optimisation each inline function stays a section of its own, which takes the mingw linker half a minute to sort.
function(vorlink_build_quickly target)
  if(NOT MSVC)
    target_compile_options(${target} PRIVATE -O1)
  endif()
endfunction()
if(TARGET gtest)
  vorlink_build_quickly(gtest)
  vorlink_build_quickly(gmock)
endif()

# vorlink_add_test(name SOURCES ... LIBRARIES ... [SIMULATOR])
#
# One executable whose every test runs in a process of its own, in a working directory of its own (the
# support main makes it). Test suites whose name begins with Slow wait for the library's own fixed times;
# they get the label `slow`. Those whose name begins with Stress run for as many seconds as VORLINK_TEST_SECONDS
# says, one unless set, and get the label `stress`. SIMULATOR: the process meets the simulated platform.
function(vorlink_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "SIMULATOR" "" "SOURCES;LIBRARIES")
  add_executable(${name} ${arg_SOURCES} ${PROJECT_SOURCE_DIR}/tests/support/Main.cpp)
  target_link_libraries(${name} PRIVATE vorlink_warnings ${arg_LIBRARIES} GTest::gmock)
  vorlink_build_quickly(${name})
  if(arg_SIMULATOR)
    vorlink_embed_simulator_manifest(${name})
    target_link_libraries(${name} PRIVATE vorlink_simulator)
  endif()
  # The first discovery may have to make the Wine prefix.
  gtest_discover_tests(
    ${name}
    TEST_FILTER -Slow*:Stress*
    TEST_PREFIX ${name}.
    NO_PRETTY_VALUES
    DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 60)
  gtest_discover_tests(
    ${name}
    TEST_FILTER Slow*
    TEST_PREFIX ${name}.
    NO_PRETTY_VALUES
    TEST_LIST ${name}_SLOW_TESTS
    DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 90 LABELS slow COST 30) # they wait, so they begin first
  gtest_discover_tests(
    ${name}
    TEST_FILTER Stress*
    TEST_PREFIX ${name}.
    NO_PRETTY_VALUES
    TEST_LIST ${name}_STRESS_TESTS
    DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 7200 LABELS stress) # the support main's watchdog, which knows their time, comes first
endfunction()
