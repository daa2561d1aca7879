# sorvane-init target
