#pragma once

// What the parts of the demo generator share: the office being built (the
// codes that later rows refer to) and a prepared insert that binds every
// value. Internal to the generator.

#include "tools/demo/Caso.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <cstddef>
#include <initializer_list>
#include <vector>

namespace sorvane::demo {

struct ClienteDemo
{
    qint32 codice = 0;
    int dal = 0;          // day number of the first business
    int al = 0;           // last day of business: the closing day, or today
    int ditta = 0;        // index of the usual firm
    double peso = 1;      // how busy the client is
};

struct ProdottoDemo
{
    QString codice;
    QString segnato;      // the code with the open mark behind it
    QString categoria;
    QString moneta;
    int ditta = 0;
    int dal = 0;
    int al = 0;
    bool polizza = false;
};

struct Ufficio
{
    int oggi = 0;
    QStringList ditte;
    QStringList banche;
    std::vector<ClienteDemo> clienti;
    std::vector<ProdottoDemo> prodotti;
};

// One INSERT prepared once, executed per row with positional values.
class Inserimento
{
public:
    Inserimento(QSqlDatabase &db, const QString &tabella, const QStringList &colonne);
    bool scrivi(std::initializer_list<QVariant> valori);
    bool scrivi(const QVariantList &valori);
    const QString &errore() const { return m_errore; }

private:
    QSqlQuery m_query;
    QString m_tabella;
    QString m_errore;
    bool m_pronta = false;
};

// Binds values to positions from `primo` on, without building a list: the
// movements' loop runs it a million times.
template <class... T>
void Lega(QSqlQuery &q, int primo, const T &...valori)
{
    (q.bindValue(primo++, QVariant(valori)), ...);
}

// The rows of a small table of texts, K cells each, in the columns named
// (`Codice`, `Descrizione` unless told); rows whose first cell is there
// already are kept.
bool ScriviCodici(QSqlDatabase &db, const QString &tabella, const char *const *celle,
                  int righe, int k, QString *errore, const QStringList &colonne = {});
template <std::size_t N, std::size_t K>
bool ScriviCodici(QSqlDatabase &db, const char *tabella, const char *const (&righe)[N][K],
                  QString *errore, const QStringList &colonne = {})
{
    return ScriviCodici(db, QLatin1String(tabella), &righe[0][0], int(N), int(K), errore,
                        colonne);
}

// The parts, in the order they run; each leaves the text of a failure.
bool ScriviTabelle(QSqlDatabase &db, Caso &caso, Ufficio &ufficio, QString *errore);
bool ScriviCambi(QSqlDatabase &db, Caso &caso, const Ufficio &ufficio, QString *errore);
bool ScriviClienti(QSqlDatabase &db, Caso &caso, Ufficio &ufficio, QString *errore);
bool ScriviSaldi(QSqlDatabase &db, Caso &caso, const Ufficio &ufficio, QString *errore);
bool ScriviMovimenti(QSqlDatabase &db, Caso &caso, const Ufficio &ufficio, qint64 quanti,
                     QString *errore);
// Rows typed on the 04 ledger for the teams; with quanti, the ledger topped
// up to that many rows.
bool ScriviRighe04(QSqlDatabase &db, Caso &caso, const Ufficio &ufficio, qint64 quanti,
                   QString *errore);

} // namespace sorvane::demo
