# Spreadsheet export sources
target_sources(reports PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/Esporta.h ${CMAKE_CURRENT_LIST_DIR}/Esporta.cpp)
