#include "tools/importa/Importazione.h"

#include "store/Transazione.h"

#include <QDate>
#include <QHash>
#include <QSqlError>
#include <QSqlQuery>
#include <QTime>

#include <cmath>

namespace sorvane::importa {

namespace {

// The program's own catalogue of attachments is made by the connection,
// never taken from elsewhere.
bool DelProgramma(const Tabella &t) { return t.nome.compare(TabellaAllegati, Qt::CaseInsensitive) == 0; }

// Yes in Access is -1, and the legacy code compares with that.
qint64 SiNo(bool b) { return b ? -1 : 0; }

// The date as the program writes it, with the time only when there is one.
QString TestoData(double serie)
{
    const double giorno = std::trunc(serie);
    const qint64 secondi = std::llround(std::fabs(serie - giorno) * 86400.0);
    const QDate d = QDate(1899, 12, 30).addDays(static_cast<qint64>(giorno) + secondi / 86400);
    QString testo = d.toString(QStringLiteral("dd/MM/yyyy"));
    if (secondi % 86400)
        testo += QTime(0, 0).addSecs(secondi % 86400).toString(QStringLiteral(" HH:mm:ss"));
    return testo;
}

bool Numero(const QString &testo, double *d)
{
    bool ok = false;
    QString t = testo.trimmed();
    *d = t.toDouble(&ok);
    if (!ok)
        *d = t.replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&ok);
    return ok;
}

QMetaType TipoQt(Tipo t)
{
    switch (t) {
    case Tipo::Intero: return QMetaType::fromType<qint64>();
    case Tipo::Reale:
    case Tipo::Data: return QMetaType::fromType<double>();
    case Tipo::Testo:
    case Tipo::Memo: break;
    }
    return QMetaType::fromType<QString>();
}

QString Testo(const QVariant &v, TipoAccess da)
{
    switch (v.typeId()) {
    case QMetaType::Bool: return QString::number(SiNo(v.toBool()));
    case QMetaType::Double:
        return da == TipoAccess::DataOra ? TestoData(v.toDouble())
                                         : QString::number(v.toDouble(), 'g', 15);
    default: return v.toString();
    }
}

bool Numerico(const QVariant &v, TipoAccess da, bool intero, QVariant *fuori, QString *motivo)
{
    double d = 0;
    switch (v.typeId()) {
    case QMetaType::Bool: d = static_cast<double>(SiNo(v.toBool())); break;
    case QMetaType::LongLong: d = static_cast<double>(v.toLongLong()); break;
    case QMetaType::Double: d = v.toDouble(); break;
    default:
        if (!Numero(v.toString(), &d)) {
            *motivo = QStringLiteral("'%1' NON E' UN NUMERO").arg(v.toString());
            return false;
        }
    }
    if (!intero)
        *fuori = d;
    else if (da == TipoAccess::DataOra)
        *fuori = static_cast<qint64>(std::trunc(d)); // the day, without the time
    else
        *fuori = static_cast<qint64>(std::llround(d));
    return true;
}

QString Sql(const QString &testo) { return QLatin1Char('"') + testo + QLatin1Char('"'); }

QString Destinazione(const Tabella &t) { return NomeSchema(t.archivio) + QLatin1Char('.') + Sql(t.nome); }

// Counts and the first row of the texts cut in each column.
struct Tagli
{
    qint64 volte = 0;
    qint64 primaRiga = 0;
};

} // namespace

QList<Voce> Pianifica(const QList<const Sorgente *> &sorgenti)
{
    QList<Voce> piano;
    QHash<const Tabella *, QString> viste;
    for (const Sorgente *s : sorgenti) {
        for (const TabellaAccess &ta : s->tabelle()) {
            Voce v;
            v.sorgente = s;
            v.tabella = ta;
            const Tabella *t = TrovaTabella(ta.nome);
            if (!t || DelProgramma(*t)) {
                v.motivo = QStringLiteral("non usata da questo programma");
            } else if (viste.contains(t)) {
                v.motivo = QStringLiteral("gia' presa da %1").arg(viste.value(t));
            } else {
                viste.insert(t, s->nome());
                v.destinazione = t;
                for (int i = 0; i < ta.colonne.size(); ++i) {
                    const ColonnaAccess &c = ta.colonne[i];
                    const Colonna *a = t->colonna(c.nome);
                    if (!a || c.tipo == TipoAccess::Altro || v.colonne.contains(a)) {
                        v.ignote.append(c.nome);
                        continue;
                    }
                    v.origini.append(i);
                    v.colonne.append(a);
                }
                if (v.colonne.isEmpty()) {
                    v.destinazione = nullptr;
                    v.motivo = QStringLiteral("nessuna colonna in comune");
                }
            }
            piano.append(v);
        }
    }
    return piano;
}

bool Converti(const QVariant &valore, TipoAccess da, const Colonna &a, QVariant *fuori,
              bool *tagliato, QString *motivo)
{
    *tagliato = false;
    if (!valore.isValid() || valore.isNull()) {
        *fuori = QVariant(TipoQt(a.tipo));
        return true;
    }
    switch (a.tipo) {
    case Tipo::Intero: return Numerico(valore, da, true, fuori, motivo);
    case Tipo::Reale:
    case Tipo::Data: return Numerico(valore, da, false, fuori, motivo);
    case Tipo::Testo:
    case Tipo::Memo: break;
    }
    QString t = Testo(valore, da);
    if (a.tipo == Tipo::Testo && a.larghezza > 0 && t.size() > a.larghezza) {
        t.truncate(a.larghezza);
        *tagliato = true;
    }
    *fuori = t;
    return true;
}

namespace {

bool HaRighe(QSqlDatabase &db, const Tabella &t, bool *righe, QString *errore)
{
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("SELECT 1 FROM %1 LIMIT 1").arg(Destinazione(t)))) {
        *errore = QStringLiteral("TABELLA %1 NON LEGGIBILE: %2")
                      .arg(t.nome, TestoErroreSqlite(q.lastError()));
        return false;
    }
    *righe = q.next();
    return true;
}

bool SorgenteVuota(const Voce &v, QString *errore, bool *vuota)
{
    *vuota = true;
    return v.sorgente->leggi(v.tabella.nome, [&](const RigaAccess &) {
        *vuota = false;
        return false;
    }, errore);
}

// One table in its savepoint. *righe counts the rows written.
bool ScriviTabella(QSqlDatabase &db, const Voce &v, bool svuota, qint64 *righe,
                   const Resoconto &resoconto, QString *errore)
{
    const Tabella &t = *v.destinazione;
    Transazione tr(db);
    if (!tr.attiva()) {
        *errore = tr.errore();
        return false;
    }
    QSqlQuery q(db);
    if (svuota && !q.exec(QStringLiteral("DELETE FROM %1").arg(Destinazione(t)))) {
        *errore = QStringLiteral("TABELLA %1: %2").arg(t.nome, TestoErroreSqlite(q.lastError()));
        return false;
    }
    QStringList nomi, segni;
    for (const Colonna *c : v.colonne) {
        nomi << Sql(c->nome);
        segni << QStringLiteral("?");
    }
    q.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                  .arg(Destinazione(t), nomi.join(QLatin1Char(',')), segni.join(QLatin1Char(','))));

    QList<Tagli> tagli(v.colonne.size());
    QString motivo;
    *righe = 0;
    const bool letta = v.sorgente->leggi(v.tabella.nome, [&](const RigaAccess &r) {
        ++*righe;
        for (int i = 0; i < v.colonne.size(); ++i) {
            const int o = v.origini[i];
            QVariant valore;
            bool tagliato = false;
            if (!Converti(r.value(o), v.tabella.colonne[o].tipo, *v.colonne[i], &valore,
                          &tagliato, &motivo)) {
                motivo = QStringLiteral("colonna %1: %2").arg(v.colonne[i]->nome, motivo);
                return false;
            }
            if (tagliato && tagli[i].volte++ == 0)
                tagli[i].primaRiga = *righe;
            q.bindValue(i, valore);
        }
        if (!q.exec()) {
            motivo = TestoErroreSqlite(q.lastError());
            return false;
        }
        return true;
    }, errore);
    if (!letta)
        return false;
    if (!motivo.isEmpty()) {
        *errore = QStringLiteral("TABELLA %1, RIGA %2 (di %3): %4")
                      .arg(t.nome)
                      .arg(*righe)
                      .arg(v.sorgente->nome(), motivo);
        return false;
    }
    if (!tr.conferma()) {
        *errore = QStringLiteral("TABELLA %1: %2").arg(t.nome, tr.errore());
        return false;
    }
    resoconto(QStringLiteral("%1 -> %2: %3 righe").arg(v.tabella.nome, NomeFile(t.archivio)).arg(*righe));
    for (int i = 0; i < v.colonne.size(); ++i)
        if (tagli[i].volte)
            resoconto(QStringLiteral("  %1: %2 testi tagliati a %3 caratteri (il primo alla riga %4)")
                          .arg(v.colonne[i]->nome)
                          .arg(tagli[i].volte)
                          .arg(v.colonne[i]->larghezza)
                          .arg(tagli[i].primaRiga));
    if (!v.ignote.isEmpty())
        resoconto(QStringLiteral("  colonne non conosciute, saltate: %1").arg(v.ignote.join(QStringLiteral(", "))));
    return true;
}

} // namespace

bool Scrivi(QSqlDatabase &db, const QList<Voce> &piano, bool sostituisci,
            const Resoconto &resoconto, QString *errore)
{
    Transazione tutto(db);
    if (!tutto.attiva()) {
        *errore = tutto.errore();
        return false;
    }
    // What holds rows already is found before anything is written, so that
    // a refusal names every such table at once.
    QStringList piene;
    QList<bool> vuote;
    for (const Voce &v : piano) {
        bool vuota = true, righe = false;
        if (DaCopiare(v) && (!SorgenteVuota(v, errore, &vuota)
                             || (!vuota && !HaRighe(db, *v.destinazione, &righe, errore))))
            return false;
        vuote.append(vuota);
        if (righe)
            piene << v.destinazione->nome;
    }
    if (!piene.isEmpty() && !sostituisci) {
        *errore = QStringLiteral("LE TABELLE %1 CONTENGONO GIA' DELLE RIGHE: "
                                 "per sostituirle ripetere con --sostituisci")
                      .arg(piene.join(QStringLiteral(", ")));
        return false;
    }

    qint64 tabelle = 0, totale = 0;
    for (int i = 0; i < piano.size(); ++i) {
        const Voce &v = piano[i];
        if (!DaCopiare(v))
            continue;
        if (vuote[i]) {
            resoconto(QStringLiteral("%1: vuota, %2 lasciata com'e'").arg(v.tabella.nome, v.destinazione->nome));
            continue;
        }
        qint64 righe = 0;
        if (!ScriviTabella(db, v, piene.contains(v.destinazione->nome), &righe, resoconto, errore))
            return false;
        ++tabelle;
        totale += righe;
    }
    if (!tutto.conferma()) {
        *errore = tutto.errore();
        return false;
    }
    resoconto(QStringLiteral("Importate %1 tabelle, %2 righe.").arg(tabelle).arg(totale));
    return true;
}

} // namespace sorvane::importa
