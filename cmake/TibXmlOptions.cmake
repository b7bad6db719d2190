# Compiler settings of our own targets. None of them reaches a caller: they hang on a private
# interface target that is linked PRIVATE everywhere.
option(TIBXML_WARNINGS_AS_ERRORS "Treat compiler warnings as errors" OFF)
option(TIBXML_BENCH "Build the measurements" OFF)
option(TIBXML_TESTS "Build the tests" ON)
option(TIBXML_FUZZ "Build the fuzzers, which needs clang" OFF)
set(TIBXML_SANITIZE "" CACHE STRING "Sanitizers to build with, as given to -fsanitize=")

# The folder of platform/ that stands for the system: one more system is one more folder.
set(TIBXML_SYSTEM linux)

add_library(tibxml_build_options INTERFACE)
target_compile_features(tibxml_build_options INTERFACE cxx_std_20)
target_compile_options(
  tibxml_build_options
  INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wcast-qual -Wundef -Wvla
            $<$<BOOL:${TIBXML_WARNINGS_AS_ERRORS}>:-Werror>)
if(TIBXML_SANITIZE)
  target_compile_options(tibxml_build_options INTERFACE -fsanitize=${TIBXML_SANITIZE}
                                                        -fno-sanitize-recover=all
                                                        -fno-omit-frame-pointer -O1)
  target_link_options(tibxml_build_options INTERFACE -fsanitize=${TIBXML_SANITIZE})
endif()
if(TIBXML_FUZZ)
  # Lets the fuzzer see which branches an input takes.
  target_compile_options(tibxml_build_options INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(tibxml_build_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
