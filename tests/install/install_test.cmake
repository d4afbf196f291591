# Installs the build into a fresh prefix and builds a user's project against it twice: with
# find_package() and with pkg-config. Run with cmake -P and BUILD_DIR, SOURCE_DIR, WORK_DIR,
# CXX, CXX_FLAGS defined.

function(must)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    list(JOIN ARGV " " command)
    message(FATAL_ERROR "${command}\ngave ${result}:\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
must(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

file(GLOB_RECURSE internals ${prefix}/include/*/detail/*)
if(internals)
  message(FATAL_ERROR "internal headers were installed: ${internals}")
endif()

if(EXISTS ${prefix}/bin/zel)
  foreach(paper man/man1/zel.1.gz bash-completion/completions/zel zsh/site-functions/_zel
      fish/vendor_completions.d/zel.fish)
    file(SIZE ${prefix}/share/${paper} size)
    if(size LESS 1000)
      message(FATAL_ERROR "${paper} has ${size} bytes only")
    endif()
  endforeach()
endif()

must(${CMAKE_COMMAND} -S ${SOURCE_DIR}/consumer -B ${WORK_DIR}/consumer
  -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
must(${CMAKE_COMMAND} --build ${WORK_DIR}/consumer)
must(${WORK_DIR}/consumer/consumer)

find_program(PKG_CONFIG pkg-config REQUIRED)
file(GLOB_RECURSE description ${prefix}/*/zel.pc)
get_filename_component(description_dir ${description} DIRECTORY)
set(ENV{PKG_CONFIG_PATH} ${description_dir})
must(${PKG_CONFIG} --cflags --libs zel)
separate_arguments(flags UNIX_COMMAND "${output} ${CXX_FLAGS}")
get_filename_component(library_dir ${description_dir} DIRECTORY)
must(${CXX} -std=c++20 ${SOURCE_DIR}/consumer/consumer.cpp ${flags} -Wl,-rpath,${library_dir}
  -o ${WORK_DIR}/by-pkg-config)
must(${WORK_DIR}/by-pkg-config)
