# A room is a folder of src/ and one OBJECT library. Objects, not archives: two back ends linked
# by mistake then fail the build, where an archive would let one of them win silently.
function(nw_room folder)
    string(REPLACE "/" "_" name "nw_${folder}")
    file(GLOB sources CONFIGURE_DEPENDS
        ${CMAKE_SOURCE_DIR}/src/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/src/${folder}/*.h)
    add_library(${name} OBJECT ${sources})
    target_link_libraries(${name} PUBLIC nw_options)
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
endfunction()

# The program's whole logic, to be linked with one pair of back ends.
set(NW_LOGIC nw_support nw_drives nw_engine nw_settings nw_report_run nw_report nw_selection nw_disk nw_shell)
