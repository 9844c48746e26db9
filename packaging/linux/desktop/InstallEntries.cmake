# Runs when Fernhop is installed, not when it is built: the files written here contain the full paths of the programs,
# which are not known before.
#
# Given: TEMPLATES (this folder), STAGING (a folder for the finished files), BINDIR and DATADIR (relative to the prefix, or
# absolute).

get_filename_component(prefix "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)
get_filename_component(bin "${BINDIR}" ABSOLUTE BASE_DIR "${prefix}")
get_filename_component(data "${DATADIR}" ABSOLUTE BASE_DIR "${prefix}")

# Key files read a backslash as the start of an escape.
function(escape_for_key_file text result)
    string(REPLACE "\\" "\\\\" escaped "${text}")
    set(${result} "${escaped}" PARENT_SCOPE)
endfunction()

# A path as an argument of a command line. It is quoted only if necessary: xdg-open splits Exec at spaces and does not
# understand quotes.
function(command_word path result)
    set(word "${path}")
    if(NOT path MATCHES "^[A-Za-z0-9/._+@:,%-]+$")
        foreach(special "\\" "\"" "`" "$")
            string(REPLACE "${special}" "\\${special}" word "${word}")
        endforeach()
        set(word "\"${word}\"")
    endif()
    escape_for_key_file("${word}" word)
    set(${result} "${word}" PARENT_SCOPE)
endfunction()

command_word("${bin}/fernhop" RESIDENT_BUS_COMMAND)
command_word("${bin}/fernhop-open" OPENER_COMMAND)
# "%" starts a field code in Exec, and only there.
string(REPLACE "%" "%%" RESIDENT_COMMAND "${RESIDENT_BUS_COMMAND}")
string(REPLACE "%" "%%" OPENER_COMMAND "${OPENER_COMMAND}")
escape_for_key_file("${bin}/fernhop" RESIDENT_PATH)
escape_for_key_file("${bin}/fernhop-open" OPENER_PATH)

# install_configured(TEMPLATE FOLDER NAME)
function(install_configured template folder name)
    configure_file("${TEMPLATES}/${template}" "${STAGING}/${folder}/${name}" @ONLY)
    file(INSTALL DESTINATION "${data}/${folder}" TYPE FILE FILES "${STAGING}/${folder}/${name}")
    # CMake writes the manifest from the variable in the caller's scope.
    set(CMAKE_INSTALL_MANIFEST_FILES "${CMAKE_INSTALL_MANIFEST_FILES}" PARENT_SCOPE)
endfunction()

install_configured(org.fernhop.Fernhop.desktop.in applications org.fernhop.Fernhop.desktop)
install_configured(org.fernhop.Fernhop.Resident.desktop.in applications org.fernhop.Fernhop.Resident.desktop)
install_configured(org.fernhop.Fernhop.service.in dbus-1/services org.fernhop.Fernhop.service)
install_configured(xfce4-helper.desktop.in xfce4/helpers org.fernhop.Fernhop.desktop)

# In a package's staging folder nothing is refreshed: the package manager does that when it installs.
if("$ENV{DESTDIR}" STREQUAL "")
    set(mimeCache "${data}/applications/mimeinfo.cache")
    if(NOT EXISTS "${mimeCache}")
        set(isCacheOurs TRUE)
    endif()
    find_program(update_desktop_database update-desktop-database)
    if(update_desktop_database)
        execute_process(COMMAND "${update_desktop_database}" -q "${data}/applications")
    endif()
    if(isCacheOurs AND EXISTS "${mimeCache}")
        list(APPEND CMAKE_INSTALL_MANIFEST_FILES "${mimeCache}")
    endif()
    # Without a cache, icons are found at once; an outdated cache would hide the new one.
    find_program(gtk_update_icon_cache gtk-update-icon-cache)
    if(gtk_update_icon_cache AND EXISTS "${data}/icons/hicolor/icon-theme.cache")
        execute_process(COMMAND "${gtk_update_icon_cache}" -q -t -f "${data}/icons/hicolor")
    endif()
    # The bus watches only folders that existed when it started.
    find_program(dbus_send dbus-send)
    if(dbus_send AND NOT "$ENV{DBUS_SESSION_BUS_ADDRESS}" STREQUAL "")
        execute_process(COMMAND "${dbus_send}" --session --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus
                                org.freedesktop.DBus.ReloadConfig
                        OUTPUT_QUIET ERROR_QUIET)
    endif()
endif()
