# Run when installing: zsh looks below share/zsh/site-functions; Debian's zsh only below /usr/local, and
# elsewhere for packages below /usr.
get_filename_component(prefix "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)
set(directory site-functions)
if(prefix STREQUAL "/usr" AND EXISTS /etc/debian_version)
  set(directory vendor-completions)
endif()
get_filename_component(share "${share}" ABSOLUTE BASE_DIR "${prefix}")
file(INSTALL DESTINATION "${share}/zsh/${directory}" TYPE FILE FILES "${completion}")
