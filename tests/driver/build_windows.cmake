# cmake -DSOURCE=... -DBUILD=... -DGENERATOR=... -P build_windows.cmake
# Builds orvane.exe, orvanec.exe and the launcher of the C++ compiler with the MinGW cross compiler.
function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGV} failed: ${status}")
    endif()
endfunction()

run(${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} -G ${GENERATOR}
    -DCMAKE_TOOLCHAIN_FILE=${SOURCE}/packaging/mingw-w64.cmake -DCMAKE_BUILD_TYPE=Release
    -DORVANE_COMMAND=ON)
run(${CMAKE_COMMAND} --build ${BUILD} --target orvane orvanec gxx_launcher)
