# The demo office that sorvane-init writes with --demo and --scale N. A
# library of its own, so that the tests and the benchmark run the same code.
add_library(dati_demo STATIC
    ${CMAKE_CURRENT_SOURCE_DIR}/demo/DatiDemo.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/demo/Nomi.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/demo/Tabelle.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/demo/Cambi.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/demo/Clienti.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/demo/Movimenti.cpp
)
target_link_libraries(dati_demo PUBLIC store)

if(TARGET sorvane-init)
    target_link_libraries(sorvane-init PRIVATE dati_demo)
endif()
