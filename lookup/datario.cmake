# Datario sources
target_sources(lookup PRIVATE)
