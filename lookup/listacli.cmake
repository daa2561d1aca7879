# ListaCli: the client popup, its search, and the round trip of a client field.
target_sources(lookup PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/CercaNomi.h
    ${CMAKE_CURRENT_LIST_DIR}/CercaNomi.cpp
    ${CMAKE_CURRENT_LIST_DIR}/ListaCli.h
    ${CMAKE_CURRENT_LIST_DIR}/ListaCli.cpp
    ${CMAKE_CURRENT_LIST_DIR}/SceltaCliente.h
    ${CMAKE_CURRENT_LIST_DIR}/SceltaCliente.cpp
)
