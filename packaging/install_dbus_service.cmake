# Run when installing: writes the D-Bus service file, which names the program by its full path, for the
# prefix that the files really go to.
get_filename_component(prefix "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)
get_filename_component(bindir "${bindir}" ABSOLUTE BASE_DIR "${prefix}")
set(QUORVANE_APPLICATION_ID "${id}")
configure_file("${template}" "${service}" @ONLY)
get_filename_component(share "${share}" ABSOLUTE BASE_DIR "${prefix}")
file(INSTALL DESTINATION "${share}/dbus-1/services" TYPE FILE FILES "${service}")
