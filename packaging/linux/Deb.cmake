# How the Debian package is made: `make deb`, or cpack -G DEB in a build folder.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME fernhop)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_CONTACT "The Fernhop developers <fernhop@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION web)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "dbus-user-session | dbus-x11")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, libglib2.0-bin, libcanberra0, qt6-wayland, libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "sound-theme-freedesktop")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "A link router for the desktop. As the default browser it receives every link that an application opens and passes it to\n the browser that the user's rules name, by the link or by the application that it comes from, or else to the fallback.")
include(CPack)
