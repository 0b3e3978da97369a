# `make package`: three Debian packages, as Debian ships a library (see docs/packaging.md):
#   liborvane0     the shared library (component Runtime)
#   liborvane-dev  headers, the liborvane.so link, CMake and pkg-config files (component Development)
#   orvane         the command-line tool, its manual page and the sample project (component Tool)
# Each carries the copyright file (with the buildingSMART attribution) and the changelog.
include(GNUInstallDirs)
set(ORVANE_DEB_RELEASE 1)
set(ORVANE_DEB_VERSION ${PROJECT_VERSION}-${ORVANE_DEB_RELEASE})
set(ORVANE_SONAME_PACKAGE liborvane${PROJECT_VERSION_MAJOR})

# The changelog and the manual page go into the packages compressed, as policy asks (gzip -n: no
# name or time stamp, so the packages are reproducible).
set(ORVANE_PACKAGING_DIR ${PROJECT_SOURCE_DIR}/packaging)
set(ORVANE_CHANGELOG_GZ ${CMAKE_BINARY_DIR}/packaging/changelog.Debian.gz)
set(ORVANE_MANPAGE_GZ ${CMAKE_BINARY_DIR}/packaging/orvane.1.gz)
foreach(pair "changelog|${ORVANE_CHANGELOG_GZ}" "../tools/orvane.1|${ORVANE_MANPAGE_GZ}")
  string(REPLACE "|" ";" pair "${pair}")
  list(GET pair 0 source)
  list(GET pair 1 target)
  get_filename_component(plain ${target} NAME_WLE)
  add_custom_command(OUTPUT ${target}
    COMMAND ${CMAKE_COMMAND} -E copy ${ORVANE_PACKAGING_DIR}/${source} ${CMAKE_BINARY_DIR}/packaging/${plain}
    COMMAND gzip -9nf ${CMAKE_BINARY_DIR}/packaging/${plain}
    DEPENDS ${ORVANE_PACKAGING_DIR}/${source} VERBATIM)
endforeach()
add_custom_target(orvane_packaging_docs ALL DEPENDS ${ORVANE_CHANGELOG_GZ} ${ORVANE_MANPAGE_GZ})

foreach(component_package "Runtime|${ORVANE_SONAME_PACKAGE}" "Development|liborvane-dev" "Tool|orvane")
  string(REPLACE "|" ";" component_package "${component_package}")
  list(GET component_package 0 component)
  list(GET component_package 1 package)
  install(FILES ${ORVANE_PACKAGING_DIR}/copyright ${ORVANE_CHANGELOG_GZ}
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
endforeach()
install(FILES ${ORVANE_MANPAGE_GZ} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Tool)

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Development Tool)
set(CPACK_PACKAGE_NAME orvane)
# Each package's description below starts with its own synopsis line; CPack puts the project-wide
# summary in front of it unless the summary is CPack's own default.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${CMAKE_PROJECT_NAME} built using CMake")
set(CPACK_PACKAGE_VENDOR "Orvane")
set(CPACK_PACKAGE_CONTACT "Orvane maintainers <maintainers@orvane.example.org>")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_DEBIAN_PACKAGE_RELEASE ${ORVANE_DEB_RELEASE})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://orvane.example.org/")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# Installed with DESTDIR, so that the install prefix is /usr itself (the pkg-config file says so).
set(CPACK_SET_DESTDIR ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# bin/orvane links liborvane.so.0 from the Runtime package, whose shlibs file is not installed yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/api)

set(ORVANE_DEB_ABOUT
    "liborvane.so loads, edits and saves IFC property-set and quantity-set XML
documents for host CAD programs, with modal editors in Spanish, flat record
exchange functions and a small handle interface.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${ORVANE_SONAME_PACKAGE})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# Only liborvane0 holds a shared object, so only it gets a shlibs file.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# dpkg runs ldconfig through its trigger, not through maintainer scripts.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${ORVANE_PACKAGING_DIR}/triggers)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "IFC property-set and quantity-set documents for host CAD programs
${ORVANE_DEB_ABOUT}
.
This package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liborvane-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${ORVANE_SONAME_PACKAGE} (= ${ORVANE_DEB_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "IFC property-set and quantity-set documents - development files
${ORVANE_DEB_ABOUT}
.
This package holds what a host program builds with: the C and C++ headers
(orvane/orvane.h is C99), the liborvane.so link, the CMake package
(find_package(Orvane), target Orvane::orvane) and the pkg-config file
(orvane).")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME orvane)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${ORVANE_SONAME_PACKAGE} (= ${ORVANE_DEB_VERSION})")
set(CPACK_DEBIAN_TOOL_DESCRIPTION "IFC property-set and quantity-set documents - command-line tool
${ORVANE_DEB_ABOUT}
.
This package holds the orvane tool (list, merge, export and import whole
documents as JSON, check documents, import buildingSMART PSD files, open
the editors) with its manual page, and the sample project, among it the
standard IFC4 sets (IFC4 property set definitions © buildingSMART
International).")
include(CPack)
