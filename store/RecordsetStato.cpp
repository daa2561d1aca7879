#include "store/RecordsetStato.h"

#include "frame/core/Campi.h"
#include "frame/core/Valore.h"
#include "store/Connessione.h"
#include "store/Motore.h"
#include "store/Transazione.h"

#include <QSqlError>
#include <QSqlRecord>

#include <algorithm>

namespace sorvane {

using namespace recordset;
namespace err = errori_recordset;

namespace {

const QString SegnapostoRiga = QStringLiteral(":riga");

bool IsNumero(const QVariant &v)
{
    switch (v.typeId()) {
    case QMetaType::Int: case QMetaType::UInt: case QMetaType::LongLong:
    case QMetaType::ULongLong: case QMetaType::Double: case QMetaType::Float:
    case QMetaType::Short: case QMetaType::UShort: case QMetaType::Long:
    case QMetaType::ULong: case QMetaType::Bool:
        return true;
    default:
        return false;
    }
}

} // namespace

namespace recordset {

QVariant ValoreLetto(const QVariant &v)
{
    return v.isNull() ? Null() : v;
}

QVariant ValoreDaScrivere(const QVariant &v)
{
    if (v.typeId() == QMetaType::QDate || v.typeId() == QMetaType::QDateTime)
        return CDbl(v);
    return v;
}

} // namespace recordset

void Recordset::Stato::Errore(int numero, const QString &testo)
{
    numeroErrore = numero;
    errore = testo;
}

void Recordset::Stato::ErroreSql(const QSqlError &e)
{
    const int n = CodiceSqlite(e);
    Errore(n != 0 ? n : 1, TestoErroreSqlite(e));
}

void Recordset::Stato::NessunRecord()
{
    Errore(err::NessunRecordCorrente, QStringLiteral("Nessun record corrente."));
}

void Recordset::Stato::CampoInesistente(const QString &nome)
{
    Errore(err::CampoInesistente,
           QStringLiteral("Elemento non trovato nell'insieme: '%1'.").arg(nome));
}

void Recordset::Stato::SenzaModifica()
{
    Errore(err::SenzaModifica, QStringLiteral("Update o CancelUpdate senza AddNew o Edit."));
}

bool Recordset::Stato::RichiediTabella(int numero)
{
    if (IsTabella())
        return true;
    Errore(numero, numero == err::SolaLettura
                       ? QStringLiteral("Impossibile aggiornare. L'oggetto è di sola lettura.")
                       : QStringLiteral("Operazione non valida per questo oggetto."));
    return false;
}

bool Recordset::Stato::RichiediRigaDaScrivere()
{
    if (!RichiediTabella(err::SolaLettura))
        return false;
    Pulisci();
    modo = dbEditNone;
    return RichiediRiga();
}

bool Recordset::Stato::RichiediRiga()
{
    Assicura();
    if (SuRiga() && !finestra[pos].cancellata)
        return true;
    NessunRecord();
    return false;
}

void Recordset::Stato::Nessuna()
{
    finestra.clear();
    pos = 0;
    nessuna = true;
}

void Recordset::Stato::Finestra(const QList<Riga> &righe)
{
    if (righe.isEmpty()) {
        Nessuna();
        return;
    }
    finestra = righe;
    pos = 0;
    nessuna = false;
}

void Recordset::Stato::Assicura()
{
    if (daPosizionare)
        PrimoOUltimo(true);
}

QVariantList Recordset::Stato::Chiave(const Riga &r) const
{
    QVariantList k;
    for (int o : ordinaliIndice)
        k << r.valori[o];
    k << r.id;
    return k;
}

void Recordset::Stato::Rinnova()
{
    if (generazione == GenerazioneCollegamento())
        return;
    preparate.clear();
    scritture.clear();
    generazione = GenerazioneCollegamento();
}

bool Recordset::Stato::Esegui(const Istruzione &istruzione, QList<Riga> *righe)
{
    Rinnova();
    auto it = preparate.find(istruzione.sql);
    if (it == preparate.end()) {
        QSqlQuery q(db);
        q.setForwardOnly(true);
        if (!q.prepare(istruzione.sql)) {
            ErroreSql(q.lastError());
            return false;
        }
        it = preparate.insert(istruzione.sql, q);
    }
    QSqlQuery &q = *it;
    for (int i = 0; i < istruzione.valori.size(); ++i)
        q.bindValue(i, istruzione.valori[i]);
    if (!q.exec()) {
        ErroreSql(q.lastError());
        return false;
    }
    // The piece's number, the row id, then the columns.
    const int n = int(colonne.size());
    QList<std::pair<int, Riga>> lette;
    while (q.next()) {
        Riga r;
        r.id = q.value(1).toLongLong();
        r.valori.reserve(n);
        for (int c = 0; c < n; ++c)
            r.valori << ValoreLetto(q.value(c + 2));
        lette.append({q.value(0).toInt(), r});
    }
    // No statement stays open: another program may want to write.
    q.finish();
    // The pieces in their order, should the engine ever interleave them.
    std::stable_sort(lette.begin(), lette.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    for (const auto &l : lette)
        righe->append(l.second);
    return true;
}

bool Recordset::Stato::Percorri(const QList<Tratto> &tratti, bool avanti, qsizetype limite,
                                QList<Riga> *righe)
{
    // No piece: nothing lies that way (beyond a Null, walking down).
    return tratti.isEmpty() || Esegui(Percorso(sorgente, colonneIndice, tratti, avanti, limite,
                                               MotoreDi(db)),
                                      righe);
}

bool Recordset::Stato::LeggiSelezione(const QVariantList &parametri)
{
    QSqlQuery q(db);
    q.setForwardOnly(true);
    const bool preparata = q.prepare(sorgente);
    for (const QVariant &v : parametri)
        q.addBindValue(ValoreDaScrivere(v));
    if (!preparata || !q.exec() || !q.isSelect()) {
        if (q.lastError().isValid())
            ErroreSql(q.lastError());
        else
            Errore(err::OperazioneNonValida, QStringLiteral("Non è una selezione."));
        return false;
    }
    const QSqlRecord rec = q.record();
    // The server's own row id closes every "*" of a table: no field.
    int campi = rec.count();
    const bool server = SuServer(db);
    if (server && campi > 1 && rec.fieldName(campi - 1) == ColonnaRiga())
        --campi;
    for (int i = 0; i < campi; ++i)
        colonne.append({server ? NomeDelDizionario(rec.fieldName(i)) : rec.fieldName(i),
                        Affinita::Numerica, 0});
    while (q.next()) {
        Riga r;
        for (int i = 0; i < campi; ++i)
            r.valori << ValoreLetto(q.value(i));
        finestra.append(r);
    }
    q.finish();
    nessuna = finestra.isEmpty();
    return true;
}

void Recordset::Stato::PrimoOUltimo(bool primo)
{
    daPosizionare = false;
    if (tipo == dbOpenSnapshot) {
        nessuna = finestra.isEmpty();
        pos = primo ? 0 : int(finestra.size()) - 1;
        return;
    }
    passo = PassoIniziale;
    QList<Riga> righe;
    if (!Percorri({Tratto{}}, primo, passo, &righe) || righe.isEmpty()) {
        Nessuna();
        return;
    }
    if (!primo)
        std::reverse(righe.begin(), righe.end());
    finestra = righe;
    nessuna = false;
    pos = primo ? 0 : int(finestra.size()) - 1;
}

bool Recordset::Stato::Seek(const QList<Tratto> &tratti, bool avanti)
{
    modo = dbEditNone;
    daPosizionare = false;
    passo = PassoIniziale;
    QList<Riga> righe;
    if (!Percorri(tratti, avanti, 1, &righe)) {
        Nessuna();
        return false;
    }
    noMatch = righe.isEmpty();
    Finestra(righe);
    return true;
}

QList<Riga> Recordset::Stato::Oltre(bool avanti)
{
    QList<Riga> righe;
    if (tipo != dbOpenTable || finestra.isEmpty())
        return righe;
    passo = std::min(passo * 2, PassoMassimo);
    const Riga &bordo = avanti ? finestra.last() : finestra.first();
    Percorri(TrattiDa(colonneIndice, Chiave(bordo), avanti, false), avanti, passo, &righe);
    return righe;
}

void Recordset::Stato::Sposta(bool avanti)
{
    Pulisci();
    modo = dbEditNone;
    while (Passo(avanti) && SuRiga() && finestra[pos].cancellata) {
    }
}

bool Recordset::Stato::Passo(bool avanti)
{
    Assicura();
    const int n = int(finestra.size());
    if (nessuna || (avanti && pos >= n) || (!avanti && pos < 0)) {
        NessunRecord();
        return false;
    }
    if (n == 0) { // the rows in hand went with a write made off the rows
        PrimoOUltimo(avanti);
        return true;
    }
    const int prossimo = pos + (avanti ? 1 : -1);
    if (prossimo >= 0 && prossimo < n) {
        pos = prossimo;
        return true;
    }
    QList<Riga> righe = Oltre(avanti);
    if (righe.isEmpty()) {
        pos = prossimo;
        return true;
    }
    const Riga corrente = finestra[pos];
    if (avanti) {
        finestra = QList<Riga>{corrente} + righe;
        pos = 1;
    } else {
        std::reverse(righe.begin(), righe.end());
        finestra = righe + QList<Riga>{corrente};
        pos = int(righe.size()) - 1;
    }
    return true;
}

bool Recordset::Stato::RileggiRiga(qint64 id)
{
    QList<Riga> righe;
    passo = PassoIniziale;
    if (!Esegui(RigaDaId(sorgente, id, MotoreDi(db)), &righe))
        return false;
    Finestra(righe);
    return true;
}

// After a write the rows in hand may be out of date: only the current one
// is kept, so that the next move fetches afresh from its key.
void Recordset::Stato::Restringi()
{
    if (SuRiga()) {
        finestra = QList<Riga>{finestra[pos]};
        pos = 0;
    } else if (!nessuna) {
        pos = pos < 0 ? -1 : 0;
        finestra.clear();
    }
    passo = PassoIniziale;
}

bool Recordset::Stato::PrendiValore(int ordinale, const QVariant &valore)
{
    QVariant v = ValoreDaScrivere(valore);
    const ColonnaTabella &c = colonne[ordinale];
    if (c.affinita == Affinita::Testo) {
        if (IsNumero(v))
            v = TestoDaCampo(v);
        if (c.larghezza > 0 && v.typeId() == QMetaType::QString) {
            const QString testo = v.toString();
            if (testo.size() > c.larghezza)
                v = testo.left(c.larghezza);
        }
    } else if (v.typeId() == QMetaType::QString) {
        if (!IsNumeric(v) || v.toString().trimmed().isEmpty()) {
            Errore(err::TipoNonCorrispondente,
                   QStringLiteral("Tipo di dati non corrispondente nel campo '%1'.").arg(c.nome));
            return false;
        }
        v = CDbl(v);
    }
    buffer[ordinale] = v.isValid() ? v : Null();
    cambiati[ordinale] = true;
    return true;
}

int Recordset::Stato::Ordinale(const QString &nome) const
{
    const auto it = ordinali.constFind(nome);
    return it != ordinali.cend() ? *it : ordinali.value(nome.toLower(), -1);
}

// The statement for the fields set so far, prepared the first time that set
// of fields is written; null with the engine's error when it cannot be. Its
// values are bound by name, a column's under its ordinal: binding by
// position costs the driver a new name for every value, row after row.
QSqlQuery *Recordset::Stato::Scrittura(bool nuova)
{
    QByteArray chiave(colonne.size() + 1, '0');
    chiave[0] = nuova ? 'I' : 'U';
    for (int i = 0; i < colonne.size(); ++i) {
        if (cambiati[i])
            chiave[i + 1] = '1';
    }
    Rinnova();
    auto it = scritture.find(chiave);
    if (it != scritture.end())
        return &*it;
    if (segnaposti.isEmpty()) {
        for (int i = 0; i < colonne.size(); ++i)
            segnaposti << QStringLiteral(":c%1").arg(i);
    }
    QStringList nomi, valori, coppie;
    for (int i = 0; i < colonne.size(); ++i) {
        if (cambiati[i]) {
            nomi << Identificatore(colonne[i].nome);
            valori << segnaposti[i];
            coppie << nomi.last() + QStringLiteral(" = ") + segnaposti[i];
        }
    }
    const QString tabella = Identificatore(sorgente);
    QString sql;
    if (nuova && nomi.isEmpty()) {
        sql = QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(tabella);
    } else if (nuova) {
        sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                  .arg(tabella, nomi.join(QStringLiteral(", ")), valori.join(QStringLiteral(", ")));
    }
    if (nuova && SuServer(db)) {
        // The server hands the new row's id back with the row.
        sql += QStringLiteral(" RETURNING ") + ColonnaRiga();
    } else if (!nuova) {
        sql = QStringLiteral("UPDATE %1 SET %2 WHERE %3 = %4")
                  .arg(tabella, coppie.join(QStringLiteral(", ")), ColonnaRiga(), SegnapostoRiga);
    }
    QSqlQuery q(db);
    if (!q.prepare(sql)) {
        ErroreSql(q.lastError());
        return nullptr;
    }
    return &*scritture.insert(chiave, q);
}

bool Recordset::Stato::Scrivi()
{
    const bool nuova = modo == dbEditAdd;
    if (!nuova) {
        ultimaModifica = finestra[pos].id;
        if (!cambiati.contains(true))
            return true;
    }
    QSqlQuery *q = Scrittura(nuova);
    if (!q)
        return false;
    for (int i = 0; i < colonne.size(); ++i) {
        if (cambiati[i])
            q->bindValue(segnaposti[i], buffer[i]);
    }
    if (!nuova)
        q->bindValue(SegnapostoRiga, finestra[pos].id);
    if (!q->exec()) {
        ErroreSql(q->lastError());
        return false;
    }
    if (nuova && SuServer(db))
        ultimaModifica = q->next() ? q->value(0).toLongLong() : 0;
    else if (nuova)
        ultimaModifica = q->lastInsertId().toLongLong();
    q->finish();
    return true;
}

} // namespace sorvane
