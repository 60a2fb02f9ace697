# Installs the build into a fresh prefix, then configures, builds and runs the
# consumer project against it. Any failing step fails the test.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
endfunction()
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_BUILD_TYPE=Release)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/consumer)
# The pkg-config file must describe the same installation.
file(READ ${prefix}/lib/pkgconfig/qel3dgraphics.pc pc)
if(NOT pc MATCHES "-lQel3DGraphics -lQel3DData")
  message(FATAL_ERROR "qel3dgraphics.pc lacks the libraries:\n${pc}")
endif()
