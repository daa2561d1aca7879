# The slip print: staging of the management list's rows and the module.
add_library(distinte_stampa STATIC
    ${CMAKE_CURRENT_LIST_DIR}/StampaDistinta.cpp
)
target_include_directories(distinte_stampa PUBLIC ${SORVANE_ROOT})
target_link_libraries(distinte_stampa PUBLIC distinte_regole reports)
