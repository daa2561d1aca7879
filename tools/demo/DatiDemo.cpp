#include "tools/demo/DatiDemo.h"

#include "tools/demo/Ufficio.h"

#include "frame/core/Giorni.h"
#include "store/Transazione.h"

#include <QSqlError>
#include <QSqlQuery>

namespace sorvane {
namespace demo {

Inserimento::Inserimento(QSqlDatabase &db, const QString &tabella, const QStringList &colonne)
    : m_query(db), m_tabella(tabella)
{
    QStringList segnaposti;
    for (int i = 0; i < colonne.size(); ++i)
        segnaposti << QStringLiteral("?");
    m_pronta = m_query.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                   .arg(tabella, colonne.join(QStringLiteral(", ")),
                                        segnaposti.join(QStringLiteral(", "))));
    if (!m_pronta)
        m_errore = tabella + QStringLiteral(": ") + TestoErroreSqlite(m_query.lastError());
}

bool Inserimento::scrivi(std::initializer_list<QVariant> valori)
{
    return scrivi(QVariantList(valori));
}

bool Inserimento::scrivi(const QVariantList &valori)
{
    if (!m_pronta)
        return false;
    for (int i = 0; i < valori.size(); ++i)
        m_query.bindValue(i, valori[i]);
    if (m_query.exec())
        return true;
    m_errore = m_tabella + QStringLiteral(": ") + TestoErroreSqlite(m_query.lastError());
    return false;
}

bool ScriviCodici(QSqlDatabase &db, const QString &tabella, const char *const *celle,
                  int righe, int k, QString *errore, const QStringList &colonne)
{
    const QStringList nomi = colonne.isEmpty()
        ? QStringList{QStringLiteral("Codice"), QStringLiteral("Descrizione")} : colonne;
    Inserimento ins(db, tabella, nomi);
    QSqlQuery esiste(db);
    esiste.prepare(QStringLiteral("SELECT COUNT(*) FROM %1 WHERE %2 = ?").arg(tabella, nomi[0]));
    for (int i = 0; i < righe; ++i) {
        QVariantList riga;
        for (int j = 0; j < k; ++j)
            riga << QString::fromLatin1(celle[i * k + j]);
        esiste.addBindValue(riga[0]);
        if (esiste.exec() && esiste.next() && esiste.value(0).toInt() > 0)
            continue;
        if (!ins.scrivi(riga)) {
            *errore = ins.errore();
            return false;
        }
    }
    return true;
}

} // namespace demo

bool GeneraDatiDemo(QSqlDatabase &db, const OpzioniDemo &opzioni, QString *errore)
{
    QString dettaglio;
    demo::Caso caso(opzioni.seme);
    demo::Ufficio ufficio;
    ufficio.oggi = GiornoDaData(opzioni.oggi.isValid() ? opzioni.oggi : QDate::currentDate());

    // All or nothing: a guard left without conferma() undoes every row.
    Transazione transazione(db);
    const bool fatto = transazione.attiva() &&
        demo::ScriviTabelle(db, caso, ufficio, &dettaglio) &&
        demo::ScriviCambi(db, caso, ufficio, &dettaglio) &&
        demo::ScriviClienti(db, caso, ufficio, &dettaglio) &&
        demo::ScriviSaldi(db, caso, ufficio, &dettaglio) &&
        demo::ScriviMovimenti(db, caso, ufficio, opzioni.movimenti, &dettaglio) &&
        demo::ScriviRighe04(db, caso, ufficio, opzioni.movimenti, &dettaglio) &&
        transazione.conferma();
    if (!fatto) {
        transazione.annulla();
        if (dettaglio.isEmpty())
            dettaglio = transazione.errore();
        if (errore)
            *errore = QStringLiteral("ERRORE NEI DATI DI PROVA: ") + dettaglio;
    }
    return fatto;
}

} // namespace sorvane
