# What a build for Windows needs beside the rest.

enable_language(RC)

# Windows looks for a program's libraries beside it.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# libzel throws to its caller, so both must share the compiler's runtime.
foreach(library libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
    OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  if(EXISTS ${found})
    file(COPY ${found} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    install(FILES ${found} TYPE BIN)
  endif()
endforeach()
