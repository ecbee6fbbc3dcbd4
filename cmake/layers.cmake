# vantrelix_compiled_together(TARGET)
#
# With sanitizers a target's sources are compiled several at a time: most of the compiler's work is the code of the same
# headers. Those that have a name in common with others of their folder are listed in compiledAlone.txt. As shipped, every
# source stands on its own includes.
function(vantrelix_compiled_together target)
  if(NOT VANTRELIX_SANITIZE OR VANTRELIX_WITH_FUZZERS)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)
  # The compiler takes every source but the first one for a header.
  target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
  file(STRINGS ${PROJECT_SOURCE_DIR}/cmake/compiledAlone.txt alone)
  list(TRANSFORM alone PREPEND ${PROJECT_SOURCE_DIR}/)
  set_source_files_properties(${alone} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# vantrelix_layer(NAME [BELOW...])
#
# One folder under src/ as one static library, linked with exactly the layers that stand below it. A header of another
# layer is reached as "layer/Header.h"; tests/layers proves that no include points upward.
function(vantrelix_layer name)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${name}/*.cpp
       ${PROJECT_SOURCE_DIR}/src/${name}/*/*.cpp ${PROJECT_SOURCE_DIR}/src/${name}/*.h)
  add_library(vantrelix_${name} STATIC ${sources})
  set_target_properties(vantrelix_${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_include_directories(vantrelix_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(vantrelix_${name} PRIVATE vantrelix_options)
  foreach(below IN LISTS ARGN)
    target_link_libraries(vantrelix_${name} PUBLIC vantrelix_${below})
  endforeach()
  vantrelix_compiled_together(vantrelix_${name})
endfunction()

# vantrelix_tests_together(NAME COUNT)
#
# The tests of one program in COUNT processes, with their results in results/NAME.K.xml. A program with sanitizers takes
# longer to start than most tests take to run; and what one test leaves behind for the next is seen too. Tests of suites
# whose name ends with "Alone" have a process each.
function(vantrelix_tests_together name count)
  math(EXPR last "${count} - 1")
  foreach(shard RANGE ${last})
    add_test(NAME ${name}.${shard} COMMAND ${name}_tests)
    set_tests_properties(${name}.${shard} PROPERTIES TIMEOUT 1200 ENVIRONMENT
      "QT_QPA_PLATFORM=offscreen;GTEST_FILTER=-*Alone.*;GTEST_TOTAL_SHARDS=${count};GTEST_SHARD_INDEX=${shard};GTEST_OUTPUT=xml:${CMAKE_BINARY_DIR}/results/${name}.${shard}.xml")
  endforeach()
  gtest_discover_tests(${name}_tests TEST_FILTER "*Alone.*" TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
                       XML_OUTPUT_DIR ${CMAKE_BINARY_DIR}/results
                       PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" TIMEOUT 120)
endfunction()

# vantrelix_tests(NAME [LINKED...])
#
# tests/NAME as one GoogleTest program that links the layer of that name and what is listed. As shipped, every test runs
# in a process of its own; with sanitizers, see above.
function(vantrelix_tests name)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${name}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${name}_tests ${sources})
  target_link_libraries(${name}_tests PRIVATE vantrelix_options test_support ${ARGN})
  # The library is tested as shipped; the tests themselves only have to compile fast.
  target_compile_options(${name}_tests PRIVATE -O0)
  if(NOT "${ARGN}" MATCHES "Qt6::")
    target_precompile_headers(${name}_tests REUSE_FROM test_support)
  else()
    target_precompile_headers(${name}_tests PRIVATE <gtest/gtest.h> <QtTest>)
  endif()
  target_include_directories(${name}_tests PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  vantrelix_compiled_together(${name}_tests)
  if(VANTRELIX_SANITIZE)
    vantrelix_tests_together(${name} 4)
  else()
    gtest_discover_tests(${name}_tests TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
                         PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" TIMEOUT 120)
  endif()
endfunction()
