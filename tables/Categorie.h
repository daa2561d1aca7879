#pragma once

// The categories and groups of the products as their small editors keep
// them: one row read, one row written (added or changed) in a transaction.

#include <QString>

#include <optional>

namespace sorvane {

struct Categoria
{
    QString Codice;
    QString Descrizione;
    QString Tipo;         // "S", "N" or "C"
    QString BuoniCattivi; // code of `TabBuoCat`
    int Colore = 0;       // blue, green, red from the high byte down
    int Totale = 0;
};

std::optional<Categoria> LeggiCategoria(const QString &codice);
// Empty when written, else the words for the user.
QString AggCateg(const Categoria &c);

// A group's description, empty when the group is not on file.
std::optional<QString> LeggiGruppo(const QString &codice);
QString AggGruppi(const QString &codice, const QString &descrizione);

} // namespace sorvane
