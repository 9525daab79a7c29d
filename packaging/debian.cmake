# The Debian package. Libraries are found by dpkg-shlibdeps in the program; what it opens by name at run time is looked
# up here, by the package that the file on this system comes from.

# package_of(FILE VARIABLE)
function(package_of file variable)
  file(REAL_PATH ${file} file)
  execute_process(COMMAND dpkg-query --search ${file} OUTPUT_VARIABLE found RESULT_VARIABLE status)
  if(NOT status EQUAL 0 OR NOT found MATCHES "^([^:,]+)")
    message(FATAL_ERROR "no package has ${file}, which the program needs at run time")
  endif()
  set(${variable} ${CMAKE_MATCH_1} PARENT_SCOPE)
endfunction()

set(type_face IPAPGothic)
# Not one of the user's own, which no package has.
execute_process(COMMAND ${CMAKE_COMMAND} -E env HOME=/nonexistent XDG_DATA_HOME=/nonexistent
                        fc-match --format=%{family}|%{file} ${type_face} OUTPUT_VARIABLE match)
if(NOT match MATCHES "${type_face}.*\\|(.+)$")
  message(FATAL_ERROR "the type face ${type_face} is not installed: ${match}")
endif()
package_of(${CMAKE_MATCH_1} type_face_package)
package_of(/usr/share/sounds/sf2/TimGM6mb.sf2 sound_font_package)
package_of(${QT6_INSTALL_PREFIX}/${QT6_INSTALL_PLUGINS}/platforms/libqxcb.so platform_package)

# A later Debian's package is newer than the same release built on an earlier one.
file(STRINGS /etc/os-release debian REGEX "^VERSION_ID=")
string(REGEX REPLACE "[^0-9]" "" debian "${debian}")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kirolane)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION}+deb${debian})
set(CPACK_PACKAGE_CONTACT "Kirolane contributors <contributors@kirolane.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "player for who shows movies and sounds to an audience")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "The console on the first display holds a silent preview, a list of movies, a\n\
list of sounds and a transport for each; picture and sound of the movie go to\n\
the second display. Every command has a key, and a file that cannot be played\n\
does not end the show.\n\
.\n\
The user interface is Japanese.")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "${platform_package}, ${type_face_package}, ${sound_font_package}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
