# The save of a slip of 500 working rows over a ledger of some 50,000
# movements, the files in a temporary folder: build/bench/bench_distinte
add_executable(bench_distinte ${CMAKE_CURRENT_LIST_DIR}/bench_distinte.cpp)
target_link_libraries(bench_distinte PRIVATE distinte_regole benchmark::benchmark)

# Opening the entry screen over 500 working rows left from an earlier run:
# build/bench/bench_insdist (offscreen unless QT_QPA_PLATFORM says otherwise)
add_executable(bench_insdist ${CMAKE_CURRENT_LIST_DIR}/bench_insdist.cpp)
target_link_libraries(bench_insdist PRIVATE distinte_schermi benchmark::benchmark)

# The management list and the slip print.
include(${CMAKE_CURRENT_LIST_DIR}/gesdist.cmake OPTIONAL)
include(${CMAKE_CURRENT_LIST_DIR}/stampadist.cmake OPTIONAL)
