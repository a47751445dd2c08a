# Where everything lies on a free desktop. The program has a folder of its own under lib; what
# lies in bin is a link to its launcher.
set(program_folder lib/velmora-master)
set(VELMORA_RELEASE_DATE "2026-11-21")
set(VELMORA_LICENCE "MIT")

install(TARGETS velmora-master RUNTIME DESTINATION ${program_folder})
install(FILES "${guide}" confined-browser.sh DESTINATION ${program_folder})
install(PROGRAMS launcher DESTINATION ${program_folder})
file(CREATE_LINK ../${program_folder}/launcher "${CMAKE_CURRENT_BINARY_DIR}/velmora-master" SYMBOLIC)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/velmora-master" DESTINATION bin)

# desktop entry, file type, AppStream
install(FILES velmora-master.desktop DESTINATION share/applications)
install(FILES velmora-master.xml DESTINATION share/mime/packages)
set(metainfo com.velmora.velmora_master.metainfo.xml)
configure_file(${metainfo}.in ${metainfo} @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${metainfo}" DESTINATION share/metainfo)

# icons of the program and of its files
set(icons "${PROJECT_SOURCE_DIR}/resources/icons")
foreach(size IN ITEMS 16 24 32 48 64 128 256)
    set(folder ${size}x${size})
    install(FILES "${icons}/${folder}/velmora-master.png"
        DESTINATION share/icons/hicolor/${folder}/apps
    )
    install(FILES "${icons}/${folder}/application-x-velmora-rig.png"
        DESTINATION share/icons/hicolor/${folder}/mimetypes
    )
endforeach()
install(FILES "${PROJECT_SOURCE_DIR}/resources/icono-app.svg"
    DESTINATION share/icons/hicolor/scalable/apps
    RENAME velmora-master.svg
)
install(FILES "${PROJECT_SOURCE_DIR}/resources/tipo-rig.svg"
    DESTINATION share/icons/hicolor/scalable/mimetypes
    RENAME application-x-velmora-rig.svg
)

# what it is made of
set(bill velmora-master.cdx.json)
configure_file(${bill}.in ${bill} @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${bill}" DESTINATION share/doc/velmora-master)

# command line
install(FILES velmora-master.bash-completion
    DESTINATION share/bash-completion/completions
    RENAME velmora-master
)

# install_compressed(SOURCE FOLDER NAME): SOURCE is installed as FOLDER/NAME.gz
function(install_compressed source folder name)
    set(compressed "${CMAKE_CURRENT_BINARY_DIR}/${folder}/${name}.gz")
    file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/${folder}")
    add_custom_command(OUTPUT "${compressed}"
        COMMAND gzip -9nc "${source}" > "${compressed}"
        DEPENDS "${source}"
        VERBATIM
    )
    install(FILES "${compressed}" DESTINATION ${folder})
    set_property(TARGET velmora_compressed APPEND PROPERTY compressed_files "${compressed}")
endfunction()

set(manual_en "${CMAKE_CURRENT_BINARY_DIR}/velmora-master.1")
set(manual_es "${CMAKE_CURRENT_BINARY_DIR}/velmora-master.es.1")
configure_file(man/velmora-master.1.in "${manual_en}" @ONLY)
configure_file(man/velmora-master.es.1.in "${manual_es}" @ONLY)
set(documents share/doc/velmora-master)
add_custom_target(velmora_compressed
    DEPENDS "$<TARGET_PROPERTY:velmora_compressed,compressed_files>"
)
add_dependencies(velmora-master velmora_compressed) # who has the program can install it
install_compressed("${manual_en}" share/man/man1 velmora-master.1)
install_compressed("${manual_es}" share/man/es/man1 velmora-master.1)

# documents
install(FILES copyright DESTINATION ${documents})
install_compressed("${PROJECT_SOURCE_DIR}/CHANGELOG.md" ${documents} changelog)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples"
    DESTINATION ${documents}
    FILES_MATCHING PATTERN "*.rig" PATTERN "README.md"
)
