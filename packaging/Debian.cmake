# The .deb package.
set(VELMORA_PACKAGE_RELEASE 1)
set(VELMORA_MAINTAINER "Velmora Master maintainers <velmora-master@example.org>")
set(VELMORA_RELEASE_TIME "Sat, 21 Nov 2026 12:00:00 +0000")

set(changelog "${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian")
configure_file(changelog.Debian.in "${changelog}" @ONLY)
install_compressed("${changelog}" ${documents} changelog.Debian)

install(FILES lintian-overrides DESTINATION share/lintian/overrides RENAME velmora-master)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${VELMORA_PACKAGE_RELEASE})
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${VELMORA_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Besides the libraries: glyphs for the texts and for the emoji of the buttons, what opens the
# reports, and Qt's own texts in Spanish.
string(JOIN ", " CPACK_DEBIAN_PACKAGE_DEPENDS
    fonts-dejavu-core
    fonts-noto-color-emoji
    qt6-translations-l10n
    xdg-utils
)
string(JOIN ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS
    qt6-wayland
    "firefox-esr | firefox | chromium | www-browser"
)
# the summary is the first line of the description, CPack adds it
string(JOIN "\n" CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Velmora Master models a truss that hangs from chain hoists and carries point"
    "loads and LED screens. It tells the load on every hanging point, at rest and"
    "while the hoists start and stop, whether each hoist stays within its capacity,"
    "how stressed the truss is, and whether an overhang makes the layout unstable."
    ""
    "Several projects can be open at once, one per tab, and one HTML report gathers"
    "them all. The texts of the program are Spanish."
)
