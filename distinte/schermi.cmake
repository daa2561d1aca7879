# The slip screens (widgets), apart from the rules they run.
add_library(distinte_schermi STATIC
    ${CMAKE_CURRENT_LIST_DIR}/ModelloBkDistinte.cpp
    ${CMAKE_CURRENT_LIST_DIR}/InsDist.cpp
    ${CMAKE_CURRENT_LIST_DIR}/InsDistCampi.cpp
    ${CMAKE_CURRENT_LIST_DIR}/InsDistAzioni.cpp
    ${CMAKE_CURRENT_LIST_DIR}/InsDistSchermo.cpp
)
target_include_directories(distinte_schermi PUBLIC ${SORVANE_ROOT})
target_link_libraries(distinte_schermi PUBLIC
    distinte_regole distinte_stampa lookup reports frame_ui frame_main store_grid
    Qt6::Widgets)
set_target_properties(distinte_schermi PROPERTIES AUTOMOC ON)
# The management screen.
include(${CMAKE_CURRENT_LIST_DIR}/gesdist.cmake OPTIONAL)
