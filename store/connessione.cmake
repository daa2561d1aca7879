# Connection, schema, attachments, transactions.
target_sources(store PRIVATE)
