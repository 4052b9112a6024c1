# Takes the guided tour: three letters and a picture of each stage.
file(REMOVE_RECURSE ${FOLDER})
execute_process(COMMAND ${DEMO} tour ${FOLDER} --images ${FOLDER}/images RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "tour: ${result}")
endif()
file(GLOB letters ${FOLDER}/drive_c/QUARDELE/DATA/*.RVE)
list(LENGTH letters count)
if(NOT count EQUAL 3)
    message(FATAL_ERROR "letters: ${letters}")
endif()
foreach(stage demarrage liste selection classement liste-choisie recherche fiche historique historique-detail
        historique-date historique-choisi fiche-apercu fiche-types fiche-nouvelle fiche-enregistree fiche-saisie suppression
        liste-suppression relances relances-cochees modele evolutions)
    if(NOT EXISTS ${FOLDER}/images/${stage}.png)
        message(FATAL_ERROR "no picture: ${stage}")
    endif()
endforeach()
