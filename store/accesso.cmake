# Recordsets, shared tables, client buffer, currency.
target_sources(store PRIVATE)
