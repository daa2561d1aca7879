# Report rendering: a long statement to PDF, and the preview's first page.
add_executable(bench_reports bench_reports.cpp)
target_include_directories(bench_reports PRIVATE ${SORVANE_ROOT})
target_compile_definitions(bench_reports PRIVATE
    PROVA_DATI="${SORVANE_ROOT}/tests/reports/data")
target_link_libraries(bench_reports PRIVATE reports benchmark::benchmark)
