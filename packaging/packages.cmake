# The Debian packages: quorvanectl, which needs no Qt, and quorvane, which needs it.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quorvane)
set(CPACK_PACKAGE_VENDOR "The Quorvane developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_HOMEPAGE_URL "${QUORVANE_WEBSITE}")
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL cli)
if(QUORVANE_QT)
  list(APPEND CPACK_COMPONENTS_ALL gui)
endif()

set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Quorvane developers <${QUORVANE_SUPPORT_MAIL}>")
set(CPACK_DEBIAN_PACKAGE_SOURCE quorvane)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(CPACK_DEBIAN_CLI_PACKAGE_NAME quorvanectl)
set(CPACK_DEBIAN_CLI_DESCRIPTION "tune Fanatec wheel bases from the command line
Reads the tuning menu that a Fanatec wheel base keeps, changes its values,
each one verified, and applies, keeps and exchanges presets. Speaks JSON to
scripts.

This package also brings the udev rule that lets the user at the machine
open a wheel base.")
set(CPACK_DEBIAN_CLI_PACKAGE_SUGGESTS quorvane)
set(CPACK_DEBIAN_CLI_PACKAGE_CONTROL_EXTRA
  "${CMAKE_CURRENT_SOURCE_DIR}/debian/postinst" "${CMAKE_CURRENT_SOURCE_DIR}/debian/postrm")

set(CPACK_DEBIAN_GUI_PACKAGE_NAME quorvane)
set(CPACK_COMPONENT_GUI_DEPENDS cli)
set(CPACK_DEBIAN_GUI_PACKAGE_RECOMMENDS
  "default-dbus-session-bus | dbus-session-bus, qt6-wayland, xdg-desktop-portal")
set(CPACK_DEBIAN_GUI_DESCRIPTION "tune Fanatec wheel bases
Shows the tuning menu that a Fanatec wheel base keeps and changes its values.
A change stays visible, next to the old value, until it is on the base, and
every value is read back after it was written.

Presets that others have published come along, with their sources, next to
your own; a simulated base lets you try everything without hardware.")

include(CPack)
