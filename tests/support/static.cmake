# The static checks that are quick enough for every run of the tests; `make static` has the others. The
# code is held to one version of the tools: another one has other findings, and these are no reason to
# distrust a build.
find_program(ORVANE_CLANG_TIDY clang-tidy)
find_program(ORVANE_CPPCHECK cppcheck)

function(add_static_test name tool known)
    execute_process(COMMAND ${tool} --version OUTPUT_VARIABLE version ERROR_QUIET)
    if(NOT version MATCHES "${known}")
        message(STATUS "Without the test static_${name}: it needs ${known}")
        return()
    endif()
    add_test(NAME static_${name}
        COMMAND ${PROJECT_SOURCE_DIR}/tests/support/check-static.sh ${name})
    set_tests_properties(static_${name} PROPERTIES LABELS static TIMEOUT 600 ENVIRONMENT JOBS=1)
endfunction()
add_static_test(cppcheck "${ORVANE_CPPCHECK}" "Cppcheck 2\\.(7|10)")
add_static_test(changed "${ORVANE_CLANG_TIDY}" "LLVM version 14\\.")
