# Manuals and change logs are packed on Debian; gzip -n leaves the time out, so that the same sources
# give the same bytes.
find_program(GZIP gzip REQUIRED)

function(tarnel_packed source target destination)
    set(origin ${CMAKE_CURRENT_SOURCE_DIR}/${source})
    set(packed ${CMAKE_CURRENT_BINARY_DIR}/${target})
    add_custom_command(OUTPUT ${packed}
        COMMAND sh -c "\"$1\" -9nc \"$2\" >\"$3\"" packed ${GZIP} ${origin} ${packed}
        DEPENDS ${origin}
        VERBATIM)
    add_custom_target(packed_${target} ALL DEPENDS ${packed})
    install(FILES ${packed} DESTINATION ${destination})
endfunction()

tarnel_packed(tarnel.1 tarnel.1.gz ${CMAKE_INSTALL_MANDIR}/man1)
tarnel_packed(tarnel-cases.1 tarnel-cases.1.gz ${CMAKE_INSTALL_MANDIR}/man1)
tarnel_packed(debian-changelog changelog.gz ${documents})
