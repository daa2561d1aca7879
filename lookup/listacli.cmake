# ListaCli sources
target_sources(lookup PRIVATE)
