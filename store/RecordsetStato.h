#pragma once

// The inside of a Recordset: the rows in hand, the cursor among them, the
// pending change and the prepared statements. Only Recordset.cpp and
// RecordsetStato.cpp see it.

#include "store/Recordset.h"
#include "store/RecordsetSql.h"

#include <QHash>
#include <QList>
#include <QSqlQuery>
#include <QStringList>

class QSqlError;

namespace sorvane {

namespace recordset {

// Rows fetched at a time by a table cursor: few after a Seek, which is
// mostly followed by reading one row, more while a walk goes on.
constexpr int PassoIniziale = 8;
constexpr int PassoMassimo = 256;

struct Riga
{
    qint64 id = 0;
    QVariantList valori;
    bool cancellata = false; // deleted through this cursor
};

// A value as read: a NULL column is Null().
QVariant ValoreLetto(const QVariant &v);
// A value as stored: a date as its day number.
QVariant ValoreDaScrivere(const QVariant &v);

} // namespace recordset

struct Recordset::Stato
{
    QSqlDatabase db;
    QString sorgente;
    int tipo = 0;
    bool aperto = false;

    QList<recordset::ColonnaTabella> colonne;
    // Name to ordinal, under the name as declared and in lower case: the
    // callers mostly spell a field as the table does, and then no lower-case
    // copy is made.
    QHash<QString, int> ordinali;

    QString indice;
    QList<recordset::ColonnaIndice> colonneIndice;
    QList<int> ordinaliIndice;

    // Rows in hand, in index order, and the cursor among them: -1 before the
    // first (BOF), size() after the last (EOF). nessuna: no current record
    // at all (empty table, failed Seek): both EOF and BOF. A snapshot holds
    // all its rows here.
    QList<recordset::Riga> finestra;
    int pos = 0;
    bool nessuna = true;
    bool daPosizionare = false; // opened or reindexed: MoveFirst when first needed
    int passo = recordset::PassoIniziale;
    bool noMatch = false;

    int modo = dbEditNone;
    QVariantList buffer;
    QList<bool> cambiati;
    qint64 ultimaModifica = 0;

    QString errore;
    int numeroErrore = 0;
    QHash<QString, QSqlQuery> preparate; // by their text
    // INSERTs and UPDATEs by the fields they set, so that rows setting the
    // same fields (a print's body rows) share one prepared statement.
    QHash<QByteArray, QSqlQuery> scritture;
    int generazione = 0; // of the connection the two above were prepared on
    QStringList segnaposti; // a column's name in them, by ordinal

    // Forgets the prepared statements of a connection since opened again.
    void Rinnova();
    void Errore(int numero, const QString &testo);
    void ErroreSql(const QSqlError &e);
    void Pulisci() { Errore(0, QString()); }
    void NessunRecord();
    void CampoInesistente(const QString &nome);
    void SenzaModifica();

    bool IsTabella() const { return aperto && tipo == dbOpenTable; }
    bool SuRiga() const { return !nessuna && pos >= 0 && pos < finestra.size(); }
    // A table, else error numero; a live current row, else NessunRecord.
    bool RichiediTabella(int numero);
    bool RichiediRiga();
    // Both, for Edit and Delete, with any pending change dropped.
    bool RichiediRigaDaScrivere();

    // The snapshot's rows, read whole; false with the error.
    bool LeggiSelezione(const QVariantList &parametri);
    void Nessuna();
    // The rows as the rows in hand, the first current; none: Nessuna.
    void Finestra(const QList<recordset::Riga> &righe);
    void Assicura();
    void PrimoOUltimo(bool primo);
    // A move; it passes over rows deleted through this cursor.
    void Sposta(bool avanti);
    bool Seek(const QList<recordset::Tratto> &tratti, bool avanti);
    bool RileggiRiga(qint64 id);
    void Restringi();

    int Ordinale(const QString &nome) const;
    bool PrendiValore(int ordinale, const QVariant &valore);
    bool Scrivi();

private:
    QSqlQuery *Scrittura(bool nuova);
    QVariantList Chiave(const recordset::Riga &r) const;
    bool Esegui(const recordset::Istruzione &istruzione, QList<recordset::Riga> *righe);
    bool Percorri(const QList<recordset::Tratto> &tratti, bool avanti, qsizetype limite,
                  QList<recordset::Riga> *righe);
    QList<recordset::Riga> Oltre(bool avanti);
    bool Passo(bool avanti);
};

} // namespace sorvane
