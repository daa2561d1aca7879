#include "reports/Esporta.h"

#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Documenti.h"
#include "reports/FileCsv.h"
#include "reports/FormatoNumeri.h"
#include "store/Schema.h"
#include "store/Motore.h"

#include <QAbstractProxyModel>
#include <QDir>
#include <QHeaderView>
#include <QProcess>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QSqlRecord>
#include <QTableView>
#include <cmath>
#include <cstdio>

namespace sorvane {

namespace {

const QChar Separatore = QLatin1Char(FileCsv::Separatore);
const QString NessunDato = QStringLiteral("NESSUN DATO DA ESPORTARE");

AvviaProgramma &avviaProgramma()
{
    static AvviaProgramma a;
    return a;
}

QString Valore(const QVariant &valore, TipoEsportato tipo, const FormatoNumeri &numeri)
{
    switch (tipo) {
    case TipoEsportato::Testo: {
        QString t = valore.typeId() == QMetaType::QString ? valore.toString()
                                                          : TestoDaCampo(valore);
        if (t.startsWith(QChar(0)))
            return {};
        t.remove(QLatin1Char('\n')); // the open mark of a product slice goes
        return t.trimmed();
    }
    case TipoEsportato::Data: {
        const double giorno = std::floor(DataDaCampo(valore).toDouble());
        if (!(giorno > 0))
            return {};
        const QDate d = DataDaGiorno(giorno);
        if (!d.isValid() || d.year() > 9999)
            return Format(giorno, QStringLiteral("dd/mm/yyyy"));
        return QStringLiteral("%1/%2/%3")
            .arg(d.day(), 2, 10, QLatin1Char('0'))
            .arg(d.month(), 2, 10, QLatin1Char('0'))
            .arg(d.year(), 4, 10, QLatin1Char('0'));
    }
    case TipoEsportato::Altro:
        break;
    }
    const QVariant v = DataDaCampo(valore);
    if (!v.isValid() || v.isNull())
        return {};
    bool numero = false;
    const double n = v.toDouble(&numero);
    return numero ? numeri.testo(n) : v.toString();
}

bool NumeroDelMotore(const QVariant &v)
{
    const int tipo = v.typeId();
    return (tipo == QMetaType::Double || tipo == QMetaType::LongLong || tipo == QMetaType::Int)
           && !v.isNull();
}

// One field of a row into the file. The kinds the engine gives most (text,
// and numbers that are amounts or days) are written straight as bytes, as
// Valore would write them; any other value goes through Valore.
void ScriviCampo(FileCsv &file, const QVariant &valore, TipoEsportato tipo,
                 const FormatoNumeri &numeri)
{
    if (tipo == TipoEsportato::Testo && valore.typeId() == QMetaType::QString) {
        const QString &t = *static_cast<const QString *>(valore.constData());
        const QStringView visto = t.startsWith(QChar(0)) ? QStringView() : QStringView(t).trimmed();
        // Blanks and line feeds are both trimmed, so the order does not matter.
        if (visto.contains(QLatin1Char('\n')))
            file.campo(visto.toString().remove(QLatin1Char('\n')));
        else
            file.campo(visto);
        return;
    }
    if (NumeroDelMotore(valore)) {
        char testo[32];
        const double n = valore.toDouble();
        if (tipo == TipoEsportato::Data) {
            const double giorno = std::floor(n);
            if (!(giorno > 0))
                return file.campoAscii(testo, 0);
            if (giorno < GiornoMassimo + 1) {
                const QDate d = DataDaGiorno(giorno);
                std::snprintf(testo, sizeof testo, "%02d/%02d/%04d", d.day(), d.month(), d.year());
                return file.campoAscii(testo, 10);
            }
        } else if (tipo == TipoEsportato::Altro) {
            const int lunghezza = numeri.ascii(n, testo);
            if (lunghezza >= 0)
                return file.campoAscii(testo, lunghezza);
        }
    }
    file.campo(Valore(valore, tipo, numeri));
}

// Where the rows of a file come from: a model, or a statement read as the
// engine gives it.
class Righe
{
public:
    virtual ~Righe() = default;
    // To the next row; false past the last.
    virtual bool prossima() = 0;
    virtual QVariant valore(int colonna) const = 0;
};

class RigheModello : public Righe
{
public:
    explicit RigheModello(const QAbstractItemModel &dati) : m_dati(dati) {}
    bool prossima() override { return ++m_riga < m_dati.rowCount(); }
    QVariant valore(int colonna) const override
    {
        return m_dati.index(m_riga, colonna).data(Qt::EditRole);
    }

private:
    const QAbstractItemModel &m_dati;
    int m_riga = -1;
};

class RigheSql : public Righe
{
public:
    explicit RigheSql(QSqlQuery query) : m_query(std::move(query)) {}
    bool prossima() override { return m_query.next(); }
    QVariant valore(int colonna) const override { return m_query.value(colonna); }

private:
    QSqlQuery m_query;
};

const QSqlQueryModel *ModelloQuery(const QAbstractItemModel *m)
{
    // Sorting and filtering proxies keep the columns of their source.
    while (const auto *proxy = qobject_cast<const QAbstractProxyModel *>(m))
        m = proxy->sourceModel();
    return qobject_cast<const QSqlQueryModel *>(m);
}

QString NomeCampo(const QAbstractItemModel &m, int colonna)
{
    if (const QSqlQueryModel *q = ModelloQuery(&m))
        return q->record().fieldName(colonna);
    const QVariant nome = m.headerData(colonna, Qt::Horizontal, Qt::UserRole);
    if (nome.isValid() && !nome.toString().isEmpty())
        return nome.toString();
    return m.headerData(colonna, Qt::Horizontal, Qt::DisplayRole).toString();
}

int ColonnaDelCampo(const QAbstractItemModel &m, const QString &campo)
{
    for (int c = 0; c < m.columnCount(); ++c) {
        if (NomeCampo(m, c).compare(campo, Qt::CaseInsensitive) == 0)
            return c;
    }
    return -1;
}

TipoEsportato TipoDi(const QAbstractItemModel &m, const QString &campo, int colonna)
{
    bool testo = false;
    for (const Tabella &t : Tabelle()) {
        if (const Colonna *c = t.colonna(campo)) {
            if (c->tipo == Tipo::Data)
                return TipoEsportato::Data;
            testo = testo || c->tipo == Tipo::Testo || c->tipo == Tipo::Memo;
        }
    }
    if (!testo && m.rowCount() > 0)
        testo = m.index(0, colonna).data(Qt::EditRole).typeId() == QMetaType::QString;
    return testo ? TipoEsportato::Testo : TipoEsportato::Altro;
}

void CaricaTutto(QAbstractItemModel &dati)
{
    while (dati.canFetchMore(QModelIndex()))
        dati.fetchMore(QModelIndex());
}

// The heading, and how many fields each column gives: the split percent
// columns of a ranking more than one.
QStringList Titoli(const QList<ColonnaEsportata> &colonne, bool classifica, QList<int> *larghezze)
{
    QStringList titoli;
    bool specialeFatta = false;
    for (const ColonnaEsportata &c : colonne) {
        const QString t = TitoloEsportato(c.titolo);
        const qsizetype pos = classifica ? t.indexOf(QLatin1String("% sul")) : -1;
        if (pos < 0) {
            titoli.append(t);
            larghezze->append(1);
        } else if (!specialeFatta) {
            specialeFatta = true;
            titoli << t.left(pos).trimmed() + QLatin1Char('%') << QStringLiteral("SALDO")
                   << QStringLiteral("PROGRESSIVO");
            larghezze->append(3);
        } else {
            titoli << t.left(pos).trimmed() << QStringLiteral("% ") + t.right(1);
            larghezze->append(2);
        }
    }
    return titoli;
}

// A ranking's percent value split into as many fields as its heading has.
QStringList Divisi(const QStringList &campi, const QList<int> &larghezze)
{
    QStringList divisi;
    for (int i = 0; i < campi.size(); ++i) {
        const int n = larghezze.at(i);
        QStringList parti = n > 1 && campi.at(i).contains(QLatin1Char('%'))
                                ? campi.at(i).split(Separatore)
                                : QStringList{campi.at(i)};
        for (QString &p : parti)
            p = p.trimmed();
        while (parti.size() > n) {
            const QString ultima = parti.takeLast();
            parti.last() += Separatore + ultima;
        }
        while (parti.size() < n)
            parti.append(QString());
        divisi += parti;
    }
    return divisi;
}

// The shared road of the grid writers; colonnaPrg is the column of dstPrg
// among the rows' values, -1 when there is none; classifica splits the
// percent columns.
bool ScriviRighe(const QString &percorso, Righe &righe, const QList<ColonnaEsportata> &colonne,
                 const QString &nome, int colonnaPrg, int primaRiga, bool classifica,
                 QString *errore)
{
    QList<int> larghezze;
    const QStringList titoli = Titoli(colonne, classifica, &larghezze);
    FileCsv file(percorso);
    if (!file.apri(errore) || !file.riga(titoli, errore))
        return false;
    if (!nome.contains(QLatin1String("DISTINTE"), Qt::CaseInsensitive))
        colonnaPrg = -1;
    for (int r = 0; r < primaRiga; ++r) {
        if (!righe.prossima())
            return file.chiudi(errore);
    }
    // The second row of a switch on a slip list keeps only its product codes.
    QList<bool> prodotto;
    for (const ColonnaEsportata &c : colonne)
        prodotto.append(c.campo.startsWith(QLatin1String("DSTCODP"), Qt::CaseInsensitive));
    const FormatoNumeri numeri;
    QStringList campi;
    while (righe.prossima()) {
        const bool seconda =
            colonnaPrg >= 0 && DataDaCampo(righe.valore(colonnaPrg)).toDouble() > 0;
        campi.clear();
        for (qsizetype i = 0; i < colonne.size(); ++i) {
            const bool vuoto = seconda && !prodotto.at(i);
            const ColonnaEsportata &c = colonne.at(i);
            if (classifica)
                campi.append(vuoto ? QString() : Valore(righe.valore(c.colonna), c.tipo, numeri));
            else if (vuoto)
                file.campo({});
            else
                ScriviCampo(file, righe.valore(c.colonna), c.tipo, numeri);
        }
        if (!(classifica ? file.riga(Divisi(campi, larghezze), errore) : file.fineRiga(errore)))
            return false;
    }
    return file.chiudi(errore);
}

bool ScriviDati(const QString &percorso, QAbstractItemModel &dati,
                const QList<ColonnaEsportata> &colonne, const QString &nome, int primaRiga,
                bool classifica, QString *errore)
{
    CaricaTutto(dati);
    RigheModello righe(dati);
    return ScriviRighe(percorso, righe, colonne, nome,
                       ColonnaDelCampo(dati, QStringLiteral("dstPrg")), primaRiga, classifica,
                       errore);
}

int RigaCorrente(const QTableView *griglia, const QAbstractItemModel *dati)
{
    const QModelIndex corrente = griglia->currentIndex();
    return dati == griglia->model() && corrente.isValid() ? corrente.row() : 0;
}

void Esporta(QTableView *griglia, QAbstractItemModel *dati, const QString &nome,
             bool classifica)
{
    if (!dati)
        dati = griglia->model();
    if (!dati)
        return;
    const auto *sorgente = classifica ? nullptr : dynamic_cast<const SorgenteSql *>(dati);
    // A list with a statement of its own is written from the engine; it
    // needs only to know that it has a row.
    if (sorgente)
        dati->fetchMore(QModelIndex());
    else
        CaricaTutto(*dati);
    if (dati->rowCount() == 0) {
        Messaggio(NessunDato);
        return;
    }
    CursoreAttesa();
    griglia->setEnabled(false);

    QList<ColonnaEsportata> colonne = ColonneVisibili(*griglia);
    if (dati != griglia->model()) {
        for (ColonnaEsportata &c : colonne)
            c.colonna = ColonnaDelCampo(*dati, c.campo);
        colonne.removeIf([](const ColonnaEsportata &c) { return c.colonna < 0; });
    }
    const QString file = FileEsportazione(nome);
    QString errore;
    const int prima = RigaCorrente(griglia, dati);
    const bool scritto =
        sorgente ? ScriviSql(file, *sorgente, colonne, nome, prima, &errore)
                 : ScriviDati(file, *dati, colonne, nome, prima, classifica, &errore);
    // Back to the first row, as the list stood before.
    if (griglia->model() && griglia->model()->rowCount() > 0)
        griglia->setCurrentIndex(
            griglia->model()->index(0, qMax(0, griglia->currentIndex().column())));
    if (scritto)
        ApriEsportazione(file);
    else
        Messaggio(errore);

    CursoreNormale();
    griglia->setEnabled(true);
}

} // namespace

MatriceValori::MatriceValori(QList<QList<QVariant>> righe, int colonne)
    : m_righe(std::move(righe)), m_colonne(colonne)
{
    if (m_colonne < 0) {
        m_colonne = 0;
        for (const QList<QVariant> &r : m_righe)
            m_colonne = qMax(m_colonne, static_cast<int>(r.size()));
    }
}

int MatriceValori::LowerBound(int) const
{
    return 0;
}

int MatriceValori::UpperBound(int dimensione) const
{
    return (dimensione == 1 ? static_cast<int>(m_righe.size()) : m_colonne) - 1;
}

QVariant MatriceValori::valore(int riga, int colonna) const
{
    return m_righe.value(riga).value(colonna);
}

QString FileEsportazione(const QString &nome)
{
    return ConSeparatore(impostazioni().PathTemp) + QStringLiteral("EXP") + nome
           + QStringLiteral(".csv");
}

QString CampoCsv(const QString &valore)
{
    static const QString Speciali = QStringLiteral(";\"\r\n");
    bool quota = false;
    for (const QChar c : valore)
        quota = quota || Speciali.contains(c);
    if (!quota)
        return valore;
    QString doppio = valore;
    doppio.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + doppio + QLatin1Char('"');
}

QString TitoloEsportato(const QString &titolo)
{
    QString t = titolo;
    t.remove(QLatin1Char('\r'));
    t.remove(QLatin1Char('\n'));
    return t;
}

QString ValoreEsportato(const QVariant &valore, TipoEsportato tipo)
{
    return Valore(valore, tipo, FormatoNumeri());
}

QList<ColonnaEsportata> ColonneVisibili(const QTableView &griglia)
{
    QList<ColonnaEsportata> colonne;
    const QAbstractItemModel *m = griglia.model();
    if (!m)
        return colonne;
    const QHeaderView *testata = griglia.horizontalHeader();
    for (int v = 0; v < testata->count(); ++v) {
        const int c = testata->logicalIndex(v);
        if (testata->isSectionHidden(c))
            continue;
        ColonnaEsportata col;
        col.colonna = c;
        col.titolo = m->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString();
        col.campo = NomeCampo(*m, c);
        col.tipo = TipoDi(*m, col.campo, c);
        colonne.append(col);
    }
    return colonne;
}

bool ScriviGriglia(const QString &percorso, QAbstractItemModel &dati,
                   const QList<ColonnaEsportata> &colonne, const QString &nome, int primaRiga,
                   QString *errore)
{
    return ScriviDati(percorso, dati, colonne, nome, primaRiga, false, errore);
}

bool ScriviClassifica(const QString &percorso, QAbstractItemModel &dati,
                      const QList<ColonnaEsportata> &colonne, const QString &nome,
                      int primaRiga, QString *errore)
{
    const bool classifica = nome.compare(QLatin1String("Classifica"), Qt::CaseInsensitive) == 0;
    return ScriviDati(percorso, dati, colonne, nome, primaRiga, classifica, errore);
}

bool ScriviSql(const QString &percorso, const SorgenteSql &sorgente,
               const QList<ColonnaEsportata> &colonne, const QString &nome, int primaRiga,
               QString *errore)
{
    QSqlQuery q(sorgente.DatabaseSql());
    // Forward only: the rows are not kept once written.
    LetturaInFlusso(q);
    bool riuscita = q.prepare(sorgente.QuerySql());
    for (const QVariant &valore : sorgente.ParametriSql())
        q.addBindValue(valore);
    riuscita = riuscita && q.exec();
    if (!riuscita) {
        if (errore)
            *errore = q.lastError().text();
        return false;
    }
    const QSqlRecord record = q.record();
    QList<ColonnaEsportata> delSql = colonne;
    for (ColonnaEsportata &c : delSql) {
        const int i = record.indexOf(c.campo);
        if (i >= 0)
            c.colonna = i;
    }
    const int colonnaPrg = record.indexOf(QStringLiteral("dstPrg"));
    RigheSql righe(std::move(q));
    return ScriviRighe(percorso, righe, delSql, nome, colonnaPrg, primaRiga, false, errore);
}

bool ScriviMatrice(const QString &percorso, const QStringList &titoli, const Matrice &matrice,
                   QString *errore)
{
    FileCsv file(percorso);
    QStringList testata;
    for (const QString &t : titoli)
        testata.append(TitoloEsportato(t));
    if (!file.apri(errore) || !file.riga(testata, errore))
        return false;
    for (int r = matrice.LowerBound(1); r <= matrice.UpperBound(1); ++r) {
        QStringList campi;
        for (int c = matrice.LowerBound(2); c <= matrice.UpperBound(2); ++c)
            campi.append(TestoDaCampo(matrice.valore(r, c)).trimmed());
        if (!file.riga(campi, errore))
            return false;
    }
    return file.chiudi(errore);
}

void EsportaGriglia(QTableView *griglia, QAbstractItemModel *dati, const QString &nome)
{
    Esporta(griglia, dati, nome, false);
}

void EsportaClassifica(QTableView *griglia, QAbstractItemModel *dati, const QString &nome)
{
    Esporta(griglia, dati, nome,
            nome.compare(QLatin1String("Classifica"), Qt::CaseInsensitive) == 0);
}

void EsportaMatrice(QTableView *griglia, const Matrice &matrice, const QString &nome)
{
    if (matrice.UpperBound(1) < matrice.LowerBound(1)) {
        Messaggio(NessunDato);
        return;
    }
    CursoreAttesa();
    griglia->setEnabled(false);
    QStringList titoli;
    if (const QAbstractItemModel *m = griglia->model()) {
        for (int c = 0; c < m->columnCount(); ++c)
            titoli.append(m->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString());
    }
    const QString file = FileEsportazione(nome);
    QString errore;
    if (ScriviMatrice(file, titoli, matrice, &errore))
        ApriEsportazione(file);
    else
        Messaggio(errore);
    CursoreNormale();
    griglia->setEnabled(true);
}

void ApriEsportazione(const QString &file)
{
    const QString programma =
        LeggiIni(impostazioni().IniLocale, QStringLiteral("APPLICATIVI"), QStringLiteral("Excel"));
    if (programma.trimmed().isEmpty()) {
        ApriDocumento(file);
        return;
    }
    const QStringList argomenti{QDir::toNativeSeparators(file)};
    const QString percorso = PercorsoNativo(programma.trimmed());
    const bool partito = avviaProgramma() ? avviaProgramma()(percorso, argomenti)
                                          : QProcess::startDetached(percorso, argomenti);
    if (!partito)
        Messaggio(Virgolettato(programma) + QLatin1Char(' ') + Virgolettato(file)
                  + QStringLiteral("  NON TROVATO"));
}

void installaAvviaProgramma(AvviaProgramma avvia)
{
    avviaProgramma() = std::move(avvia);
}

} // namespace sorvane
