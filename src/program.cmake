# The program, in a folder of its own: that folder is what every list shows until settings name others.
add_executable(kirolane main.cpp)
target_link_libraries(kirolane PRIVATE kirolane_logic kirolane_qt kirolane_mpv kirolane_posix kirolane_pictures)
set_target_properties(kirolane PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/kirolane)
