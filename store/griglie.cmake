# Grid column layouts (widgets).
