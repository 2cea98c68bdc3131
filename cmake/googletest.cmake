# GoogleTest built from Debian's sources of it, for a target that Debian has no library for. Gives the targets that
# find_package gives, and gtest_discover_tests.
set(googletest_source /usr/src/googletest/googletest)

add_library(gtest STATIC ${googletest_source}/src/gtest-all.cc)
target_include_directories(gtest SYSTEM PUBLIC ${googletest_source}/include)
target_include_directories(gtest SYSTEM PRIVATE ${googletest_source})
target_compile_options(gtest PRIVATE -w)
target_link_libraries(gtest PUBLIC Threads::Threads)

add_library(gtest_main STATIC ${googletest_source}/src/gtest_main.cc)
target_compile_options(gtest_main PRIVATE -w)
target_link_libraries(gtest_main PUBLIC gtest)

add_library(GTest::gtest ALIAS gtest)
add_library(GTest::gtest_main ALIAS gtest_main)

# Every start of a program under Wine costs, so all tests of a program are one test here.
function(gtest_discover_tests program)
    add_test(NAME ${program} COMMAND ${program})
endfunction()
