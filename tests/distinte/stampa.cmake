# The slip print: the staged rows read back from the work file, the module
# by firm or by client, the failing steps; the slip per firm also on paper.
sorvane_test(test_stampadist
    SOURCES
        ${CMAKE_CURRENT_LIST_DIR}/../distinte/ProvaDistinte.h
        ${CMAKE_CURRENT_LIST_DIR}/test_stampa.cpp
    LIBS distinte_stampa)
target_compile_definitions(test_stampadist PRIVATE
    MODULI_PREDEFINITI="${SORVANE_ROOT}/reports/moduli")
