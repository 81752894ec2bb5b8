# What `cmake --install` puts where, and how other projects find it.
include(CMakePackageConfigHelpers)

install(TARGETS quillbrook quillbrook-embedded quillbrook-documents EXPORT quillbrook_targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS quillbrook-pdf quillbrook-web LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_SKIP)
if(TARGET quillbrook_tool)
    install(TARGETS quillbrook_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

# The page for browsers, where it was built.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/out/web/ DESTINATION ${CMAKE_INSTALL_DATADIR}/quillbrook/web OPTIONAL)

# Headers name each other as "host/edit.h"; they lie below include/quillbrook, which is on the include path of
# whoever links us, so that nothing of ours stands in the prefix's own include directory.
set(installed_headers ${CMAKE_INSTALL_INCLUDEDIR}/quillbrook)
file(GLOB library_headers ${PROJECT_SOURCE_DIR}/include/quillbrook/*.h)
file(GLOB host_headers ${PROJECT_SOURCE_DIR}/host/*.h)
install(FILES ${library_headers} DESTINATION ${installed_headers})
install(FILES ${host_headers} DESTINATION ${installed_headers}/host)
foreach(header edit_builder fraction long_runs messages rates services warning)
    install(FILES ${PROJECT_SOURCE_DIR}/embedded/${header}.h DESTINATION ${installed_headers}/embedded)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/documents/document.h DESTINATION ${installed_headers}/documents)
install(FILES ${PROJECT_SOURCE_DIR}/formats/edit_reading.h DESTINATION ${installed_headers}/formats)
install(FILES ${PROJECT_SOURCE_DIR}/formats/otio/otio_reader.h DESTINATION ${installed_headers}/formats/otio)

# Manual pages and completion, which the command writes from the tables of its options, and pages of the file formats,
# made of the documents that tell of them.
if(TARGET quillbrook_tool AND NOT QUILLBROOK_FUZZ)
    find_package(Python3 REQUIRED COMPONENTS Interpreter)
    set(QUILLBROOK_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/site-functions CACHE STRING "Where zsh looks for completion")
    set(help_folder ${PROJECT_BINARY_DIR}/help)
    set(format_documents ${PROJECT_SOURCE_DIR}/docs/formats.md ${PROJECT_SOURCE_DIR}/docs/logs.md
        ${PROJECT_SOURCE_DIR}/docs/logging-tables.md)
    add_custom_command(OUTPUT ${help_folder}/made
        COMMAND ${CMAKE_COMMAND} -E rm -rf ${help_folder}
        COMMAND quillbrook_tool help --files ${help_folder}
        COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/scripts/make_format_pages.py ${PROJECT_VERSION} ${help_folder}/man5
        COMMAND ${CMAKE_COMMAND} -E touch ${help_folder}/made
        DEPENDS quillbrook_tool ${format_documents} ${PROJECT_SOURCE_DIR}/scripts/make_format_pages.py VERBATIM)
    add_custom_target(quillbrook_help ALL DEPENDS ${help_folder}/made)
    install(DIRECTORY ${help_folder}/man1 ${help_folder}/man5 DESTINATION ${CMAKE_INSTALL_MANDIR})
    install(FILES ${help_folder}/completions/bash/quillbrook DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES ${help_folder}/completions/zsh/_quillbrook DESTINATION ${QUILLBROOK_ZSH_COMPLETIONS})
    install(FILES ${help_folder}/completions/fish/quillbrook.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endif()

# What users and hosts read, and the schemas of what is written as JSON.
file(GLOB pages ${PROJECT_SOURCE_DIR}/docs/*.md)
install(FILES ${pages} ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/pictures DESTINATION ${CMAKE_INSTALL_DOCDIR})
file(GLOB schemas ${PROJECT_SOURCE_DIR}/docs/*.schema.json)
install(FILES ${schemas} DESTINATION ${CMAKE_INSTALL_DATADIR}/quillbrook)

# find_package(quillbrook): quillbrook::quillbrook and quillbrook::embedded.
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/quillbrook)
install(EXPORT quillbrook_targets NAMESPACE quillbrook:: FILE quillbrook-targets.cmake DESTINATION ${package_folder})
file(WRITE ${PROJECT_BINARY_DIR}/quillbrook-config.cmake
    "include(\${CMAKE_CURRENT_LIST_DIR}/quillbrook-targets.cmake)\n")
write_basic_package_version_file(${PROJECT_BINARY_DIR}/quillbrook-config-version.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/quillbrook-config.cmake ${PROJECT_BINARY_DIR}/quillbrook-config-version.cmake
    DESTINATION ${package_folder})

# pkg-config: quillbrook is the library alone, for hosts of their own; quillbrook-embedded brings ours along.
file(RELATIVE_PATH prefix_from_pc /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
foreach(name quillbrook quillbrook-embedded)
    configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
