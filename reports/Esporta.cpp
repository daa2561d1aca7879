#include "reports/Esporta.h"

#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Documenti.h"
#include "store/Schema.h"

#include <QAbstractProxyModel>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLocale>
#include <QProcess>
#include <QSqlQueryModel>
#include <QSqlRecord>
#include <QTableView>
#include <cmath>

namespace sorvane {

namespace {

const QChar Separatore = QLatin1Char(';');
const QString NessunDato = QStringLiteral("NESSUN DATO DA ESPORTARE");

#ifdef Q_OS_WIN
const char FineRiga[] = "\r\n";
#else
const char FineRiga[] = "\n";
#endif

AvviaProgramma &avviaProgramma()
{
    static AvviaProgramma a;
    return a;
}

// The file in the making: UTF-8 with its mark, one line per call.
class FileCsv
{
public:
    explicit FileCsv(const QString &percorso) : m_file(percorso) {}

    bool apri(QString *errore)
    {
        if (m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return scrivi("\xEF\xBB\xBF", errore);
        if (errore)
            *errore = m_file.errorString();
        return false;
    }

    bool riga(const QStringList &campi, QString *errore)
    {
        QString testo;
        for (const QString &c : campi)
            testo += CampoCsv(c) + Separatore;
        return scrivi(testo.toUtf8() + FineRiga, errore);
    }

    bool chiudi(QString *errore)
    {
        if (m_file.flush()) {
            m_file.close();
            return true;
        }
        if (errore)
            *errore = m_file.errorString();
        return false;
    }

private:
    bool scrivi(const QByteArray &dati, QString *errore)
    {
        if (m_file.write(dati) == dati.size())
            return true;
        if (errore)
            *errore = m_file.errorString();
        return false;
    }

    QFile m_file;
};

QString NumeroComeTesto(double n)
{
    if (std::isfinite(n) && std::floor(n) == n && std::fabs(n) < 1e15)
        return QString::number(static_cast<qint64>(n));
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(n, 'g', 15);
}

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

// Fields of one row: the second row of a switch on a slip list keeps only
// its product codes.
QStringList CampiRiga(const QAbstractItemModel &dati, const QList<ColonnaEsportata> &colonne,
                      int riga, bool soloProdotti)
{
    QStringList campi;
    for (const ColonnaEsportata &c : colonne) {
        if (soloProdotti && !c.campo.toUpper().startsWith(QLatin1String("DSTCODP")))
            campi.append(QString());
        else
            campi.append(ValoreEsportato(dati.index(riga, c.colonna).data(Qt::EditRole), c.tipo));
    }
    return campi;
}

// The shared road of the grid writers; classifica splits the percent columns.
bool ScriviDati(const QString &percorso, QAbstractItemModel &dati,
                const QList<ColonnaEsportata> &colonne, const QString &nome, int primaRiga,
                bool classifica, QString *errore)
{
    CaricaTutto(dati);
    // How many fields each column gives: the split percent columns more than one.
    QList<int> larghezze;
    QStringList titoli;
    bool specialeFatta = false;
    for (const ColonnaEsportata &c : colonne) {
        const QString t = TitoloEsportato(c.titolo);
        const qsizetype pos = classifica ? t.indexOf(QLatin1String("% sul")) : -1;
        if (pos < 0) {
            titoli.append(t);
            larghezze.append(1);
        } else if (!specialeFatta) {
            specialeFatta = true;
            titoli << t.left(pos).trimmed() + QLatin1Char('%') << QStringLiteral("SALDO")
                   << QStringLiteral("PROGRESSIVO");
            larghezze.append(3);
        } else {
            titoli << t.left(pos).trimmed() << QStringLiteral("% ") + t.right(1);
            larghezze.append(2);
        }
    }

    FileCsv file(percorso);
    if (!file.apri(errore) || !file.riga(titoli, errore))
        return false;
    const bool distinte = nome.toUpper().contains(QLatin1String("DISTINTE"));
    const int colonnaPrg = distinte ? ColonnaDelCampo(dati, QStringLiteral("dstPrg")) : -1;
    for (int r = qMax(0, primaRiga); r < dati.rowCount(); ++r) {
        const bool seconda =
            colonnaPrg >= 0
            && DataDaCampo(dati.index(r, colonnaPrg).data(Qt::EditRole)).toDouble() > 0;
        QStringList campi = CampiRiga(dati, colonne, r, seconda);
        if (classifica) {
            QStringList divisi;
            for (int i = 0; i < campi.size(); ++i) {
                const int n = larghezze.at(i);
                QStringList parti = n > 1 && campi.at(i).contains(QLatin1Char('%'))
                                        ? campi.at(i).split(Separatore)
                                        : QStringList{campi.at(i)};
                for (QString &p : parti)
                    p = p.trimmed();
                // As many fields as the heading gives the column.
                while (parti.size() > n) {
                    const QString ultima = parti.takeLast();
                    parti.last() += Separatore + ultima;
                }
                while (parti.size() < n)
                    parti.append(QString());
                divisi += parti;
            }
            campi = divisi;
        }
        if (!file.riga(campi, errore))
            return false;
    }
    return file.chiudi(errore);
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
    const bool scritto = ScriviDati(file, *dati, colonne, nome, prima, classifica, &errore);
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
    switch (tipo) {
    case TipoEsportato::Testo: {
        QString t = TestoDaCampo(valore);
        t.remove(QLatin1Char('\n')); // the open mark of a product slice goes
        return t.trimmed();
    }
    case TipoEsportato::Data: {
        const double giorno = std::floor(DataDaCampo(valore).toDouble());
        return giorno > 0 ? Format(giorno, QStringLiteral("dd/mm/yyyy")) : QString();
    }
    case TipoEsportato::Altro:
        break;
    }
    const QVariant v = DataDaCampo(valore);
    if (!v.isValid() || v.isNull())
        return {};
    bool numero = false;
    const double n = v.toDouble(&numero);
    return numero ? NumeroComeTesto(n) : v.toString();
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
