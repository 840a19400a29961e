# Programs lie together, so that what they read at run time lies beside them.
set(TAVIX_PROGRAM_DIR ${CMAKE_BINARY_DIR}/bin)

# The settings that every target of ours shares. They hang on one interface target, so that a
# target shows by its link line that it is ours.
add_library(tavix_settings INTERFACE)
target_compile_features(tavix_settings INTERFACE cxx_std_20)
target_include_directories(tavix_settings INTERFACE ${CMAKE_CURRENT_SOURCE_DIR}/src)
target_compile_options(tavix_settings INTERFACE
    -Wall -Wextra -Wpedantic
    # Source locations in messages name files from the top of the tree, not from the machine.
    -fmacro-prefix-map=${CMAKE_CURRENT_SOURCE_DIR}/=
    $<$<CONFIG:Release>:-O2>)
if(TAVIX_WARNINGS_AS_ERRORS)
    target_compile_options(tavix_settings INTERFACE -Werror)
endif()
if(TAVIX_SANITIZE)
    target_compile_options(tavix_settings INTERFACE
        -fsanitize=${TAVIX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tavix_settings INTERFACE -fsanitize=${TAVIX_SANITIZE})
endif()

if(TAVIX_FUZZ)
    # The fuzzer steers by the branches that an input takes.
    target_compile_options(tavix_settings INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(tavix_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

# tavix_add_tests(NAME LIBS lib... SOURCES file...): one GoogleTest program; ctest runs its cases.
function(tavix_add_tests name)
    cmake_parse_arguments(ARG "" "" "LIBS;SOURCES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE tavix_settings ${ARG_LIBS} GTest::gtest GTest::gtest_main)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300)
endfunction()
