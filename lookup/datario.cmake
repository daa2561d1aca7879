# Datario sources
target_sources(lookup PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/RegoleDatario.h ${CMAKE_CURRENT_LIST_DIR}/RegoleDatario.cpp
    ${CMAKE_CURRENT_LIST_DIR}/Datario.h ${CMAKE_CURRENT_LIST_DIR}/Datario.cpp)
