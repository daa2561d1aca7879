# sorvane-init target: the set-up tool that makes a data folder.
add_executable(sorvane-init
    ${CMAKE_CURRENT_SOURCE_DIR}/init/main.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/init/Installazione.h
    ${CMAKE_CURRENT_SOURCE_DIR}/init/Installazione.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/init/RigheIniziali.cpp
)
target_link_libraries(sorvane-init PRIVATE store frame_core Qt6::Core Qt6::Sql)
# Report templates installed into a new data folder when no --moduli is given.
target_compile_definitions(sorvane-init PRIVATE
    SORVANE_MODELLI_PREDEFINITI="${SORVANE_ROOT}/reports/moduli")
