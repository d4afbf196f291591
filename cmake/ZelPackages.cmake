# Debian packages, one for each install component, by CPack.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_PACKAGE_CONTACT "The Zel maintainers <maintainers@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/zel)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(zel_soname_package libzel${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

# zel_package(COMPONENT PACKAGE SECTION SUMMARY DESCRIPTION [DEPENDS])
# Names the package of a component and gives it the two papers that every package carries.
function(zel_package component package section summary description)
  string(TOUPPER ${component} upper)
  set(prefix CPACK_DEBIAN_${upper}_PACKAGE)
  set(${prefix}_NAME ${package} PARENT_SCOPE)
  set(${prefix}_SECTION ${section} PARENT_SCOPE)
  set(${prefix}_DEPENDS "${ARGV5}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component})
  set(changelog ${PROJECT_BINARY_DIR}/packaging/${component}/changelog.Debian)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/changelog.in ${changelog} @ONLY)
  file(ARCHIVE_CREATE OUTPUT ${changelog}.gz PATHS ${changelog} FORMAT raw COMPRESSION GZip
    COMPRESSION_LEVEL 9)
  install(FILES ${changelog}.gz
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component})
endfunction()

zel_package(library ${zel_soname_package} libs
  "services for 3D modelling applications - library"
  "Slot arrays, meshes of nodes, triangles and quads with their algorithms, tagged
text files, geometry, curves and textures for desktop 3D modelling.
.
This package holds the shared library.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
zel_package(development libzel-dev libdevel
  "services for 3D modelling applications - development files"
  "Headers, CMake package and pkg-config description of libzel."
  "${zel_soname_package} (= ${PROJECT_VERSION}-1), libopengl-dev")
set(CPACK_COMPONENTS_ALL library development)
if(ZEL_BUILD_TOOLS)
  zel_package(tools zel graphics
    "look into, weld, convert, compare and draw 3D meshes"
    "The program zel reads and writes mesh files, finds what is wrong with a
mesh, welds, orients and unfolds it, fits planes, lines and circles, and
draws it in a window or into a picture."
    "${zel_soname_package} (>= ${PROJECT_VERSION})")
  list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
if(ZEL_BUILD_PYTHON)
  zel_package(python python3-zel python
    "services for 3D modelling applications - Python module"
    "The Python module zel: meshes as values over NumPy arrays, with the algorithms
and file formats of libzel."
    "${zel_soname_package} (>= ${PROJECT_VERSION}), python3 (>= 3.11), python3 (<< 3.12), python3-numpy")
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()

include(CPack)
