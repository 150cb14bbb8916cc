# What the tests of compiled programs share: the cross compiler, an installation tree made from this
# build (fixture "stage") and a Wine prefix (fixture "wine").
find_program(ORVANE_MINGW_GXX NAMES x86_64-w64-mingw32-g++-posix x86_64-w64-mingw32-g++)
find_program(ORVANE_WINESERVER wineserver)
if(NOT ORVANE_MINGW_GXX OR NOT ORVANE_WINESERVER)
    message(FATAL_ERROR "The tests of compiled programs need the MinGW cross compiler and Wine: "
        "run tests/support/setup.sh windows, or configure with -DORVANE_WINDOWS_TESTS=OFF")
endif()

set(ORVANE_TEST_STAGE ${PROJECT_BINARY_DIR}/stage)
set(ORVANE_TEST_PREFIX ${PROJECT_BINARY_DIR}/wineprefix)

add_test(NAME stage
    COMMAND ${CMAKE_COMMAND} --install ${PROJECT_BINARY_DIR} --prefix ${ORVANE_TEST_STAGE})
set_tests_properties(stage PROPERTIES FIXTURES_SETUP stage TIMEOUT 60)

set(wine_functions ${PROJECT_SOURCE_DIR}/tests/support/wine.sh)
add_test(NAME wine_up COMMAND sh -c ". '${wine_functions}' && wine_up null")
set_tests_properties(wine_up PROPERTIES FIXTURES_SETUP wine TIMEOUT 120
    ENVIRONMENT ORVANE_TEST_PREFIX=${ORVANE_TEST_PREFIX})
add_test(NAME wine_down COMMAND sh -c ". '${wine_functions}' && wine_environment null && wine_down")
set_tests_properties(wine_down PROPERTIES FIXTURES_CLEANUP wine TIMEOUT 60
    ENVIRONMENT ORVANE_TEST_PREFIX=${ORVANE_TEST_PREFIX})

add_test(NAME wine_run COMMAND sh ${PROJECT_SOURCE_DIR}/tests/support/wine_run_test.sh)
set_tests_properties(wine_run PROPERTIES TIMEOUT 60)
