# Programs that use the library as its users do: C programs compiled as
# strict C99, Fortran programs that `use zem`, both linked against libzem.so.
find_package(Threads REQUIRED)
set(ZEM_C_CLIENT_FLAGS -std=c99 -Wall -Wextra -pedantic -Werror)
set(ZEM_F_CLIENT_FLAGS -Wall -Werror -Wno-unused-dummy-argument -std=f2018)

function(zem_client_program name source)
  add_executable(${name} ${source})
  get_filename_component(ext ${source} LAST_EXT)
  if(ext STREQUAL ".c")
    target_compile_options(${name} PRIVATE ${ZEM_C_CLIENT_FLAGS})
    target_link_libraries(${name} PRIVATE zem m Threads::Threads)
  else()
    add_dependencies(${name} zem_fmod)
    target_include_directories(${name} PRIVATE ${CMAKE_BINARY_DIR}/include)
    target_compile_options(${name} PRIVATE ${ZEM_F_CLIENT_FLAGS})
    target_link_libraries(${name} PRIVATE zem)
  endif()
endfunction()

# zem_client_test(<name> <source> <expected>): builds the program and adds a
# test that runs it in a fresh directory and compares its standard output,
# standard error and exit status with the file <expected>
# (cmake/compare_output.cmake says how).
function(zem_client_test name source expected)
  zem_client_program(${name} ${source})
  if(ZEM_TESTS)
    add_test(NAME ${name}
      COMMAND ${CMAKE_COMMAND} -DPROG=$<TARGET_FILE:${name}> -DEXPECTED=${expected}
              -DDIR=${CMAKE_CURRENT_BINARY_DIR}/${name}.run -P ${CMAKE_SOURCE_DIR}/cmake/compare_output.cmake)
    set_tests_properties(${name} PROPERTIES LABELS client)
  endif()
endfunction()
