# One test program per folder, named after it. Tests link the folders' code statically
# (tibxml_internals), so that they reach what the shared library hides; tests of the installed
# product link TibXml::TibXml instead.
#
#   tibxml_test_program(query_tests SOURCES LexerTest.cpp ParserTest.cpp PACKAGES LibXml2::LibXml2)
function(tibxml_test_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LIBRARY" "SOURCES;PACKAGES")
  if(NOT arg_LIBRARY)
    set(arg_LIBRARY tibxml_internals)
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE tibxml_build_options ${arg_LIBRARY} GTest::gtest_main
                                        ${arg_PACKAGES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
  gtest_discover_tests(${name} TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 60)
endfunction()

# A program of its own, because it makes every allocation of the code under test fail in turn.
function(tibxml_memory_test_program name)
  tibxml_test_program(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE failing_allocation)
endfunction()
