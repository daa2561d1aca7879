#include "store/Recordset.h"

#include "frame/core/Campi.h"
#include "frame/core/Valore.h"
#include "store/RecordsetStato.h"

#include <QSqlError>
#include <QSqlQuery>

#include <cmath>
#include <limits>

namespace sorvane {

using namespace recordset;
namespace err = errori_recordset;

Recordset::Recordset() = default;

Recordset::Recordset(std::shared_ptr<Stato> stato) : d(std::move(stato)) {}

Recordset Recordset::Apri(const QSqlDatabase &db, const QString &sorgente, int tipo,
                          const QVariantList &parametri)
{
    auto s = std::make_shared<Stato>();
    s->db = db;
    s->sorgente = sorgente;
    s->tipo = tipo;
    QString testo;
    if (tipo == dbOpenTable) {
        if (!LeggiColonne(db, sorgente, &s->colonne, &testo)) {
            s->Errore(err::TabellaInesistente, testo);
            return Recordset(s);
        }
        s->daPosizionare = true;
    } else if (tipo == dbOpenSnapshot) {
        if (!s->LeggiSelezione(parametri))
            return Recordset(s);
    } else {
        s->Errore(err::OperazioneNonValida, QStringLiteral("Tipo di apertura non valido."));
        return Recordset(s);
    }
    for (int i = 0; i < s->colonne.size(); ++i) {
        s->ordinali.insert(s->colonne[i].nome, i);
        s->ordinali.insert(s->colonne[i].nome.toLower(), i);
    }
    s->aperto = true;
    return Recordset(s);
}

bool Recordset::IsOpen() const { return d && d->aperto; }
int Recordset::Tipo() const { return d ? d->tipo : 0; }
QString Recordset::Sorgente() const { return d ? d->sorgente : QString(); }

void Recordset::Close()
{
    if (!d)
        return;
    d->aperto = false;
    d->preparate.clear();
    d->scritture.clear();
    d->db = QSqlDatabase(); // the connection may go once every cursor is closed
    d->modo = dbEditNone;
    d->Nessuna();
}

QString Recordset::Index() const { return d ? d->indice : QString(); }

bool Recordset::SetIndex(const QString &nome)
{
    if (!d || !d->RichiediTabella(err::OperazioneNonValida))
        return false;
    d->Pulisci();
    if (nome.compare(d->indice, Qt::CaseInsensitive) != 0) {
        QList<ColonnaIndice> colonne;
        QList<int> ordinali;
        if (!nome.isEmpty() && LeggiIndice(d->db, d->sorgente, nome, &colonne)) {
            for (const ColonnaIndice &c : colonne)
                ordinali << d->Ordinale(c.nome);
        }
        if (!nome.isEmpty() && (colonne.isEmpty() || ordinali.contains(-1))) {
            d->Errore(err::IndiceInesistente,
                      QStringLiteral("'%1' non è un indice della tabella.").arg(nome));
            return false;
        }
        d->indice = nome;
        d->colonneIndice = colonne;
        d->ordinaliIndice = ordinali;
    }
    d->modo = dbEditNone;
    d->daPosizionare = true;
    return true;
}

bool Recordset::Seek(const QString &confronto, const QVariant &chiave)
{
    return Seek(confronto, QVariantList{chiave});
}

bool Recordset::Seek(const QString &confronto, const QVariantList &chiavi)
{
    if (!d)
        return false;
    d->noMatch = true;
    if (!d->RichiediTabella(err::OperazioneNonValida))
        return false;
    if (d->indice.isEmpty()) {
        d->Errore(err::SenzaIndice, QStringLiteral("Operazione non valida senza un indice."));
        return false;
    }
    const QString op = confronto.trimmed();
    const QStringList confronti = {QStringLiteral("="), QStringLiteral(">="), QStringLiteral(">"),
                                   QStringLiteral("<="), QStringLiteral("<")};
    if (chiavi.isEmpty() || chiavi.size() > d->colonneIndice.size() || !confronti.contains(op)) {
        d->Errore(err::OperazioneNonValida, QStringLiteral("Seek non valido: '%1' su %2 chiavi.")
                                                .arg(confronto)
                                                .arg(chiavi.size()));
        return false;
    }
    d->Pulisci();
    QVariantList k;
    for (const QVariant &v : chiavi)
        k << ValoreDaScrivere(v);
    if (op == QLatin1String("="))
        return d->Seek({TrattoUguale(d->colonneIndice, k)}, true);
    // "<" and "<=" want the last row below the key: the walk goes down to it.
    const bool avanti = !op.startsWith(QLatin1Char('<'));
    return d->Seek(TrattiDa(d->colonneIndice, k, avanti, op.endsWith(QLatin1Char('='))), avanti);
}

bool Recordset::NoMatch() const { return !d || d->noMatch; }

bool Recordset::Eof() const
{
    if (!IsOpen())
        return true;
    d->Assicura();
    return d->nessuna || d->pos >= d->finestra.size();
}

bool Recordset::Bof() const
{
    if (!IsOpen())
        return true;
    d->Assicura();
    return d->nessuna || d->pos < 0;
}

void Recordset::MoveFirst()
{
    if (IsOpen()) {
        d->Pulisci();
        d->modo = dbEditNone;
        d->PrimoOUltimo(true);
    }
}

void Recordset::MoveLast()
{
    if (IsOpen()) {
        d->Pulisci();
        d->modo = dbEditNone;
        d->PrimoOUltimo(false);
    }
}

void Recordset::MoveNext()
{
    if (IsOpen())
        d->Sposta(true);
}

void Recordset::MovePrevious()
{
    if (IsOpen())
        d->Sposta(false);
}

qint64 Recordset::RecordCount() const
{
    if (!IsOpen())
        return 0;
    if (d->tipo == dbOpenSnapshot)
        return d->finestra.size();
    QSqlQuery q(d->db);
    if (!q.exec(QStringLiteral("SELECT COUNT(*) FROM %1").arg(Identificatore(d->sorgente)))
        || !q.next()) {
        d->ErroreSql(q.lastError());
        return 0;
    }
    return q.value(0).toLongLong();
}

int Recordset::FieldCount() const { return IsOpen() ? int(d->colonne.size()) : 0; }

QString Recordset::FieldName(int ordinale) const
{
    return ordinale >= 0 && ordinale < FieldCount() ? d->colonne[ordinale].nome : QString();
}

int Recordset::FieldOrdinal(const QString &nome) const
{
    return IsOpen() ? d->Ordinale(nome) : -1;
}

QVariant Recordset::Fields(const QString &nome) const
{
    const int o = FieldOrdinal(nome);
    if (o < 0 && d)
        d->CampoInesistente(nome);
    return o < 0 ? Empty() : Fields(o);
}

QVariant Recordset::Fields(int ordinale) const
{
    if (ordinale < 0 || ordinale >= FieldCount()) {
        if (d)
            d->CampoInesistente(QString::number(ordinale));
        return Empty();
    }
    if (d->modo != dbEditNone)
        return d->buffer[ordinale];
    if (!d->RichiediRiga())
        return Empty();
    return d->finestra[d->pos].valori[ordinale];
}

bool Recordset::SetField(const QString &nome, const QVariant &valore)
{
    const int o = FieldOrdinal(nome);
    if (o < 0 && d)
        d->CampoInesistente(nome);
    return o >= 0 && SetField(o, valore);
}

bool Recordset::SetField(int ordinale, const QVariant &valore)
{
    if (!IsOpen() || d->modo == dbEditNone) {
        if (d)
            d->SenzaModifica();
        return false;
    }
    if (ordinale < 0 || ordinale >= FieldCount()) {
        d->CampoInesistente(QString::number(ordinale));
        return false;
    }
    d->Pulisci();
    return d->PrendiValore(ordinale, valore);
}

bool Recordset::AddNew()
{
    if (!d || !d->RichiediTabella(err::SolaLettura))
        return false;
    d->Pulisci();
    d->Assicura();
    d->modo = dbEditAdd;
    d->buffer = QVariantList(d->colonne.size(), Null());
    d->cambiati = QList<bool>(d->colonne.size(), false);
    return true;
}

bool Recordset::Edit()
{
    if (!d || !d->RichiediRigaDaScrivere())
        return false;
    d->modo = dbEditInProgress;
    d->buffer = d->finestra[d->pos].valori;
    d->cambiati = QList<bool>(d->colonne.size(), false);
    return true;
}

bool Recordset::Update()
{
    if (!IsOpen() || d->modo == dbEditNone) {
        if (d)
            d->SenzaModifica();
        return false;
    }
    d->Pulisci();
    if (!d->Scrivi())
        return false; // the change stays pending: the caller may fix it or cancel
    const bool modifica = d->modo == dbEditInProgress;
    d->modo = dbEditNone;
    if (modifica)
        return d->RileggiRiga(d->ultimaModifica);
    d->Restringi();
    return true;
}

void Recordset::CancelUpdate()
{
    if (d)
        d->modo = dbEditNone;
}

bool Recordset::Delete()
{
    if (!d || !d->RichiediRigaDaScrivere())
        return false;
    QSqlQuery q(d->db);
    q.prepare(QStringLiteral("DELETE FROM %1 WHERE %2 = ?")
                  .arg(Identificatore(d->sorgente), ColonnaRiga()));
    q.addBindValue(d->finestra[d->pos].id);
    if (!q.exec()) {
        d->ErroreSql(q.lastError());
        return false;
    }
    d->finestra[d->pos].cancellata = true;
    d->Restringi();
    return true;
}

int Recordset::EditMode() const { return d ? d->modo : dbEditNone; }
qint64 Recordset::LastModified() const { return d ? d->ultimaModifica : 0; }

qint64 Recordset::Bookmark() const
{
    if (!IsOpen())
        return 0;
    d->Assicura();
    return d->SuRiga() ? d->finestra[d->pos].id : 0;
}

bool Recordset::SetBookmark(qint64 riga)
{
    if (!d || !d->RichiediTabella(err::OperazioneNonValida))
        return false;
    d->Pulisci();
    d->modo = dbEditNone;
    d->daPosizionare = false;
    return d->RileggiRiga(riga) && !d->nessuna;
}

QString Recordset::Errore() const { return d ? d->errore : QString(); }
int Recordset::NumeroErrore() const { return d ? d->numeroErrore : 0; }

bool LeggiIntero(const QVariant &valore, qint64 minimo, qint64 massimo, qint64 *risultato)
{
    // Half to even, as an assignment to a whole-number variable rounds.
    const double x = std::nearbyint(CDbl(DataDaCampo(valore)));
    if (!std::isfinite(x) || x < double(minimo) || x > double(massimo))
        return false;
    *risultato = qint64(x);
    return true;
}

bool LeggiIntero32(const QVariant &valore, std::int32_t *risultato)
{
    qint64 v = 0;
    if (!LeggiIntero(valore, std::numeric_limits<std::int32_t>::min(),
                     std::numeric_limits<std::int32_t>::max(), &v))
        return false;
    *risultato = std::int32_t(v);
    return true;
}

} // namespace sorvane
