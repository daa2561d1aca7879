#include "distinte/ModelloDistinte.h"

#include "distinte/Movimento.h"
#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Valore.h"
#include "store/Connessione.h"
#include "store/Transazione.h"

#include <QBrush>
#include <QColor>
#include <QSqlError>
#include <QSqlQuery>

namespace sorvane {

namespace {

// Rows read at once: a screenful and more at the first reading, so that
// the grid opens full, then as many again each time it reaches the end.
constexpr int PrimaPagina = 128;
constexpr int Pagina = 256;

const char *const Titoli[ColonneGestione] = {
    "PRG",  "T",       "DATA", "NOMINATIVO", "COD.",    "COD.",  "COD.",   "COD.",
    "COD.", "CAUSALE", "MON",  "IMPORTO",    "ASSEGNO", "BANCA", "Chiusa", "Spese UT"};

const QColor Rosso(0xFF, 0x00, 0x00);
const QColor Blu(0x00, 0x00, 0xFF);
const QColor Bianco(0xFF, 0xFF, 0xFF);
const QColor Nero(0x00, 0x00, 0x00);

bool ColonnaCodice(int colonna)
{
    return colonna >= GesPrimoCodice && colonna <= GesUltimoCodice;
}

} // namespace

void DelegatoDistinte::initStyleOption(QStyleOptionViewItem *opzione,
                                       const QModelIndex &indice) const
{
    QStyledItemDelegate::initStyleOption(opzione, indice);
    const QVariant colore = indice.data(Qt::ForegroundRole);
    if (!colore.isValid())
        return;
    const QColor c = colore.value<QBrush>().color();
    // A hidden cell takes the selection's own colour; a coloured one keeps it.
    if (c == Bianco)
        opzione->palette.setBrush(QPalette::HighlightedText,
                                  opzione->palette.brush(QPalette::Highlight));
    else
        opzione->palette.setColor(QPalette::HighlightedText, c);
}

ModelloDistinte::ModelloDistinte(QObject *padre) : QSqlQueryModel(padre) {}

bool ModelloDistinte::Carica(const QString &query, const QVariantList &parametri,
                             QString *errore)
{
    m_query = query;
    m_parametri = parametri;
    m_pagine.reset();
    m_righe.clear();
    QSqlQuery q(Db());
    bool riuscita = q.prepare(query);
    for (const QVariant &valore : parametri)
        q.addBindValue(valore);
    riuscita = riuscita && q.exec();
    if (!riuscita) {
        if (errore)
            *errore = TestoErroreSqlite(q.lastError());
        clear();
        return false;
    }
    setQuery(std::move(q));
    return !lastError().isValid();
}

bool ModelloDistinte::CaricaPagine(const CondizioneDistinte &condizione,
                                   const OrdineLista &ordine, QString *errore)
{
    // The statement without rows gives the grid and the export the
    // columns' names; the rows come from the pages.
    if (!Carica(QueryGestione(condizione, ordine.clausola) + QStringLiteral(" LIMIT 0"),
                condizione.parametri, errore))
        return false;
    m_query = QueryGestione(condizione, ordine.clausola);
    m_pagine = std::make_unique<PagineDistinte>(condizione, ordine);
    QString motivo;
    QList<QVariantList> righe;
    if (!m_pagine->Prossime(PrimaPagina, &righe, &motivo)) {
        if (errore)
            *errore = motivo;
        clear();
        return false;
    }
    beginResetModel();
    m_righe = std::move(righe);
    endResetModel();
    return true;
}

void ModelloDistinte::clear()
{
    m_pagine.reset();
    m_righe.clear();
    QSqlQueryModel::clear();
}

int ModelloDistinte::rowCount(const QModelIndex &padre) const
{
    if (!m_pagine)
        return QSqlQueryModel::rowCount(padre);
    return padre.isValid() ? 0 : int(m_righe.size());
}

bool ModelloDistinte::canFetchMore(const QModelIndex &padre) const
{
    if (!m_pagine)
        return QSqlQueryModel::canFetchMore(padre);
    return !padre.isValid() && !m_pagine->Finite();
}

void ModelloDistinte::fetchMore(const QModelIndex &padre)
{
    if (!m_pagine) {
        QSqlQueryModel::fetchMore(padre);
        return;
    }
    if (padre.isValid() || m_pagine->Finite())
        return;
    QList<QVariantList> righe;
    // A page that fails ends the list where it is; the rows shown stay.
    const bool riuscita = m_pagine->Prossime(Pagina, &righe);
    if (!righe.isEmpty()) {
        const int prima = int(m_righe.size());
        beginInsertRows(QModelIndex(), prima, prima + int(righe.size()) - 1);
        m_righe.append(std::move(righe));
        endInsertRows();
    }
    if (!riuscita)
        m_pagine->Termina();
}

QSqlDatabase ModelloDistinte::DatabaseSql() const { return Db(); }

void ModelloDistinte::Aggiorna(int righe)
{
    if (m_query.isEmpty())
        return;
    // A refresh that fails leaves an empty list; the screen goes on.
    if (m_pagine) {
        const CondizioneDistinte condizione = m_pagine->Condizione();
        const OrdineLista ordine = m_pagine->Ordine();
        CaricaPagine(condizione, ordine);
    } else {
        Carica(m_query, m_parametri);
    }
    CaricaFinoA(righe - 1);
}

void ModelloDistinte::CaricaFinoA(int riga)
{
    while (rowCount() <= riga && canFetchMore())
        fetchMore();
}

QVariant ModelloDistinte::valore(int riga, int colonna) const
{
    if (!m_pagine)
        return QSqlQueryModel::data(index(riga, colonna), Qt::DisplayRole);
    if (riga < 0 || riga >= m_righe.size() || colonna < 0 || colonna >= ColonneGestione)
        return {};
    return m_righe[riga][colonna];
}

QString ModelloDistinte::grezzo(int riga, int colonna) const
{
    return valore(riga, colonna).toString();
}

std::int32_t ModelloDistinte::Codice(int riga) const { return valore(riga, GesPrg).toInt(); }

QString ModelloDistinte::Prg(int riga) const { return grezzo(riga, GesRiga).trimmed(); }

int ModelloDistinte::columnCount(const QModelIndex &padre) const
{
    // The headings stand before the first extraction as well.
    return padre.isValid() ? 0 : int(ColonneGestione);
}

QVariant ModelloDistinte::colore(int riga, int colonna) const
{
    if (ColonnaCodice(colonna))
        return HaMarca(grezzo(riga, colonna)) ? QVariant(QBrush(Rosso)) : QVariant();
    if (!ColonnaDiTestata(colonna))
        return {};
    if (Prg(riga) != RigaPrincipale)
        return QBrush(Bianco);
    const QString chiusa = TestoDaCampo(valore(riga, GesChiusa));
    return QBrush(chiusa > QStringLiteral(" ") ? Blu : Nero);
}

QVariant ModelloDistinte::data(const QModelIndex &indice, int ruolo) const
{
    if (!indice.isValid())
        return {};
    const int colonna = indice.column();
    switch (ruolo) {
    case Qt::ForegroundRole:
        return colore(indice.row(), colonna);
    case Qt::TextAlignmentRole:
        if (colonna == GesPrg || colonna == GesImporto || colonna == GesSpese)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        if (colonna == GesData || colonna == GesRiga || colonna == GesMoneta
            || colonna == GesChiusa)
            return int(Qt::AlignCenter);
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::DisplayRole:
        break;
    case Qt::EditRole:
        if (m_pagine)
            return valore(indice.row(), colonna);
        return QSqlQueryModel::data(indice, ruolo);
    default:
        return m_pagine ? QVariant() : QSqlQueryModel::data(indice, ruolo);
    }
    const QVariant dato = valore(indice.row(), colonna);
    switch (colonna) {
    case GesData: {
        const double giorno = CDbl(dato);
        return giorno > 0 ? DataDaGiorno(giorno).toString(QStringLiteral("dd/MM/yyyy"))
                          : QString();
    }
    case GesImporto:
        return Format(CDbl(dato), QStringLiteral("Standard"));
    case GesSpese: {
        const double spese = CDbl(dato);
        return spese != 0 ? Format(spese, QStringLiteral("Standard")) : QString();
    }
    default:
        // A code shows bare: its mark is the colour.
        return ColonnaCodice(colonna) ? TagliaMarca(dato.toString()).trimmed()
                                      : dato.toString().trimmed();
    }
}

QVariant ModelloDistinte::headerData(int sezione, Qt::Orientation verso, int ruolo) const
{
    // The export names a column by the query's field, from the record.
    if (verso == Qt::Horizontal && ruolo == Qt::DisplayRole && sezione >= 0
        && sezione < ColonneGestione)
        return QString::fromLatin1(Titoli[sezione]);
    return QSqlQueryModel::headerData(sezione, verso, ruolo);
}

} // namespace sorvane
