# The management screen of the saved slips and its list.
target_sources(distinte_schermi PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/SchermiDistinte.cpp
    ${CMAKE_CURRENT_LIST_DIR}/ModelloDistinte.cpp
    ${CMAKE_CURRENT_LIST_DIR}/GesDist.cpp
    ${CMAKE_CURRENT_LIST_DIR}/GesDistCampi.cpp
    ${CMAKE_CURRENT_LIST_DIR}/GesDistLista.cpp
    ${CMAKE_CURRENT_LIST_DIR}/GesDistAzioni.cpp
    ${CMAKE_CURRENT_LIST_DIR}/GesDistSchermo.cpp
)
