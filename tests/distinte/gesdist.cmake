# The management screen, driven through its widgets.
sorvane_test(test_gesdist
    SOURCES
        ${CMAKE_CURRENT_LIST_DIR}/ProvaDistinte.h
        ${CMAKE_CURRENT_LIST_DIR}/ProvaSchermi.h
        ${CMAKE_CURRENT_LIST_DIR}/test_gesdist.cpp
    LIBS distinte_schermi Qt6::Test)
