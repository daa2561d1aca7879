# demo data sources, added to sorvane-init
