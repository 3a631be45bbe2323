# How the rooms of the house become targets. A room is a folder with a CMakeLists.txt of
# one or two calls; its sources are the .cpp files in it.

# corvane_room(host_ge DEPS host_os): a static library of the folder's sources.
function(corvane_room name)
  cmake_parse_arguments(ROOM "" "" "DEPS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp)
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC ${ROOM_DEPS})
endfunction()

# corvane_tests(host_ge_tests DEPS host_ge): one test program, its cases listed by ctest.
# The folder's data, if any, is found under CORVANE_TEST_DATA (tests/data).
function(corvane_tests name)
  cmake_parse_arguments(TESTS "" "" "DEPS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp)
  add_executable(${name} ${sources})
  target_compile_definitions(${name} PRIVATE
    CORVANE_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data" CORVANE_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE ${TESTS_DEPS} GTest::gtest GTest::gmock GTest::gtest_main)
  include(GoogleTest)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 DISCOVERY_MODE PRE_TEST)
endfunction()

# corvane_benchmark(host_ge_benchmarks DEPS host_ge): one Google Benchmark program.
function(corvane_benchmark name)
  cmake_parse_arguments(BENCH "" "" "DEPS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp)
  add_executable(${name} ${sources})
  target_compile_definitions(${name} PRIVATE CORVANE_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE ${BENCH_DEPS} benchmark::benchmark_main)
endfunction()

# Adds every folder below the named ones that has a CMakeLists.txt. Their order is free, since
# targets may be named before they exist.
function(corvane_folders)
  foreach(top ${ARGN})
    file(GLOB_RECURSE lists CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR} ${top}/CMakeLists.txt)
    list(SORT lists)
    foreach(file ${lists})
      get_filename_component(folder ${file} DIRECTORY)
      add_subdirectory(${folder})
    endforeach()
  endforeach()
endfunction()
