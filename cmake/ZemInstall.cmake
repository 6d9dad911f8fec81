# What `cmake --install` adds beside the library, headers and CMake package,
# and the Debian packages made from the same install rules (cpack -G DEB).
#
# Components: Runtime (the shared object, the licence) becomes libzem1;
# Development (headers, Fortran module, zem.pc, CMake package, the .so link,
# the documentation and the examples) becomes libzem-dev.

# zem.pc is relocatable (paths from ${pcfiledir}).  Outside /usr a program
# linked with it gets a run path to the library, so that it starts without
# ldconfig or LD_LIBRARY_PATH wherever the prefix is; in /usr (the Debian
# packages) it needs none.  The choice is made when installing, by the prefix
# then in use (a staging prefix ending in /usr counts as /usr).  -lm because
# a C program that uses the library almost always wants <math.h> too.
file(RELATIVE_PATH ZEM_PC_TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" ZEM_PC_TO_PREFIX "${ZEM_PC_TO_PREFIX}")
set(ZEM_PC_RPATH "-Wl,-rpath,\${libdir}")
configure_file(cmake/zem.pc.in ${CMAKE_BINARY_DIR}/zem.pc @ONLY)
set(ZEM_PC_RPATH "")
configure_file(cmake/zem.pc.in ${CMAKE_BINARY_DIR}/zem-usr.pc @ONLY)
install(CODE "
  if(CMAKE_INSTALL_PREFIX MATCHES \"(^|/)usr/?$\")
    set(zem_pc \"${CMAKE_BINARY_DIR}/zem-usr.pc\")
  else()
    set(zem_pc \"${CMAKE_BINARY_DIR}/zem.pc\")
  endif()
  file(INSTALL DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig\" TYPE FILE
       RENAME zem.pc FILES \"\${zem_pc}\")
" COMPONENT Development)

# The CMake package's Zem::zem brings -lm for the same reason.
target_link_libraries(zem INTERFACE m)

# The pages (Markdown, readable as they are), the example programs with the
# output they print, and the licence.  -DZEM_DOCS_HTML=<dir> (the output of
# tools/docs.sh) installs the rendered site as share/doc/zem/html.
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Development
  FILES_MATCHING PATTERN "*.md" PATTERN "*.txt" PATTERN "*.png" PATTERN "*.svg")
file(GLOB zem_example_files CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/examples/*.c
  ${CMAKE_SOURCE_DIR}/examples/*.f90 ${CMAKE_SOURCE_DIR}/examples/*.out)
install(FILES ${zem_example_files} DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT Development)
install(FILES examples/mpi/mpi_option.c examples/mpi/mpi_option.out
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples/mpi COMPONENT Development)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Runtime)
set(ZEM_DOCS_HTML "" CACHE PATH "Rendered documentation site to install (tools/docs.sh output)")
if(ZEM_DOCS_HTML)
  install(DIRECTORY ${ZEM_DOCS_HTML}/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/html COMPONENT Development)
endif()

# Into /usr or /usr/local as root, the dynamic linker's cache is refreshed
# at once (the directories are in Debian's ld.so.conf); elsewhere zem.pc's
# run path does the work.  Not when staging (DESTDIR, cpack).
install(CODE [[
  if("$ENV{DESTDIR}" STREQUAL "" AND CMAKE_INSTALL_PREFIX MATCHES "^/usr(/local)?/?$")
    execute_process(COMMAND id -u OUTPUT_VARIABLE zem_uid OUTPUT_STRIP_TRAILING_WHITESPACE)
    find_program(ZEM_LDCONFIG ldconfig PATHS /sbin /usr/sbin)
    if(zem_uid STREQUAL "0" AND ZEM_LDCONFIG)
      message(STATUS "Running ${ZEM_LDCONFIG}")
      execute_process(COMMAND ${ZEM_LDCONFIG})
    else()
      message(STATUS "Run ldconfig as root so that programs find libzem.so without a run path")
    endif()
  endif()
]] COMPONENT Runtime)

# Debian packages: libzem1 (run time) and libzem-dev (development).
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zem)
set(CPACK_PACKAGE_VENDOR "The Zem developers")
set(CPACK_PACKAGE_CONTACT "The Zem developers <zem-devel@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "numerical library with C and Fortran interfaces (64-bit integers)")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzem1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzem-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libzem1 (= ${PROJECT_VERSION}), pkgconf | pkg-config")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "gfortran, gcc | c-compiler")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "numerical library: run time
 The shared object libzem.so.1: roots, quadrature, random numbers,
 probability distributions and special functions, called from C, C++
 and Fortran.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "numerical library: development files
 C header zem.h, the Fortran module zem, pkg-config file, CMake package,
 reference pages and example programs.")
include(CPack)
