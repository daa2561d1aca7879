#include "tables/ModelloTabella.h"

#include "store/Connessione.h"
#include "store/Recordset.h"
#include "store/Transazione.h"
#include "store/Motore.h"

#include <QSqlError>
#include <QSqlQuery>

namespace sorvane {

namespace {

const QString Correggi =
    QStringLiteral("\nCORREGGERE LA RIGA, OPPURE ANNULLARLA CON IL TASTO ESC.");

bool Vuota(const QStringList &valori)
{
    for (const QString &v : valori) {
        if (!v.trimmed().isEmpty())
            return false;
    }
    return true;
}

} // namespace

ModelloTabella::ModelloTabella(const TabellaRiferimento &tabella, QObject *padre)
    : QAbstractTableModel(padre), m_tabella(tabella)
{
}

ModelloTabella::Riga ModelloTabella::vuota() const
{
    Riga r;
    for (int i = 0; i < m_tabella.colonne.size(); ++i)
        r.valori.append(QString());
    return r;
}

bool ModelloTabella::Refresh()
{
    QStringList campi{QStringLiteral("rowid")};
    for (const ColonnaRiferimento &c : m_tabella.colonne)
        campi.append(c.campo);
    QSqlQuery q(Db());
    LetturaInAvanti(q);
    const bool letta =
        q.exec(QStringLiteral("SELECT %1 FROM %2 ORDER BY %3")
                   .arg(campi.join(QStringLiteral(", ")), m_tabella.tabella, m_tabella.ordine));
    beginResetModel();
    m_righe.clear();
    m_sospesa = -1;
    m_originali.clear();
    m_numeroErrore = letta ? 0 : std::max(CodiceSqlite(q.lastError()), 1);
    m_errore = letta ? QString() : TestoErroreSqlite(q.lastError());
    while (letta && q.next()) {
        Riga r;
        r.id = q.value(0).toLongLong();
        for (int i = 1; i < campi.size(); ++i)
            r.valori.append(q.value(i).toString());
        m_righe.append(r);
    }
    endResetModel();
    return letta;
}

int ModelloTabella::rowCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : int(m_righe.size()) + 1;
}

int ModelloTabella::columnCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : int(m_tabella.colonne.size());
}

QVariant ModelloTabella::data(const QModelIndex &indice, int ruolo) const
{
    if (!indice.isValid() || indice.row() >= m_righe.size())
        return {};
    const QString valore = m_righe[indice.row()].valori.value(indice.column());
    switch (ruolo) {
    case Qt::DisplayRole:
        return m_tabella.colonne[indice.column()].segno ? SegnoMostrato(valore) : valore;
    case Qt::EditRole:
        return valore;
    default:
        return {};
    }
}

QVariant ModelloTabella::headerData(int sezione, Qt::Orientation verso, int ruolo) const
{
    if (ruolo != Qt::DisplayRole)
        return {};
    if (verso == Qt::Horizontal)
        return m_tabella.colonne.value(sezione).intestazione;
    // The record selector: the row for a new one, the row being typed.
    if (sezione == rigaNuova())
        return QStringLiteral("*");
    return sezione == m_sospesa ? QStringLiteral(">") : QString();
}

Qt::ItemFlags ModelloTabella::flags(const QModelIndex &indice) const
{
    if (!indice.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable;
}

bool ModelloTabella::setData(const QModelIndex &indice, const QVariant &valore, int ruolo)
{
    if (!indice.isValid() || ruolo != Qt::EditRole)
        return false;
    const int riga = indice.row();
    const QString testo = valore.toString().left(m_tabella.colonne[indice.column()].larghezza);
    if (riga == rigaNuova()) {
        if (testo.isEmpty())
            return false;
        beginInsertRows({}, riga + 1, riga + 1);
        m_righe.append(vuota());
        endInsertRows();
        m_sospesa = riga;
        m_originali = m_righe[riga].valori;
    } else if (m_righe[riga].valori[indice.column()] == testo) {
        return true;
    } else if (m_sospesa != riga) {
        m_sospesa = riga;
        m_originali = m_righe[riga].valori;
    }
    m_righe[riga].valori[indice.column()] = testo;
    emit dataChanged(indice, indice);
    emit headerDataChanged(Qt::Vertical, riga, riga);
    return true;
}

QString ModelloTabella::Aggiorna()
{
    if (m_sospesa < 0)
        return {};
    Riga &r = m_righe[m_sospesa];
    const bool nuova = r.id == 0;
    if (nuova && Vuota(r.valori)) {
        Annulla();
        return {};
    }
    Transazione t;
    Recordset rs = Recordset::Apri(Db(), m_tabella.tabella, dbOpenTable);
    bool ok = t.attiva() && rs.IsOpen()
              && (nuova ? rs.AddNew() : (rs.SetBookmark(r.id) && rs.Edit()));
    for (int i = 0; ok && i < m_tabella.colonne.size(); ++i) {
        const QString &v = r.valori[i];
        ok = rs.SetField(m_tabella.colonne[i].campo, v.isEmpty() ? QVariant() : QVariant(v));
    }
    ok = ok && rs.Update();
    const qint64 id = ok ? (nuova ? rs.LastModified() : r.id) : 0;
    const int numero = t.attiva() ? rs.NumeroErrore() : t.codice();
    const QString motivo = t.attiva() ? rs.Errore() : t.errore();
    rs.Close();
    if (ok && t.conferma()) {
        r.id = id;
        const int riga = m_sospesa;
        m_sospesa = -1;
        m_originali.clear();
        emit headerDataChanged(Qt::Vertical, riga, riga);
        return {};
    }
    if (ok) // the commit itself failed
        return TestoGuasto(QStringLiteral("LA RIGA NON E' STATA REGISTRATA.") + Correggi,
                           t.errore());
    const ColonnaRiferimento &chiave = m_tabella.colonne.first();
    if ((numero & 0xff) == sqlite::Vincolo)
        return TestoGuasto(QStringLiteral("LA RIGA NON E' STATA REGISTRATA: %1 \"%2\" ESISTE GIA'.")
                                   .arg(chiave.intestazione.toUpper(), r.valori.first().trimmed())
                               + Correggi,
                           motivo);
    return TestoGuasto(QStringLiteral("LA RIGA NON E' STATA REGISTRATA.") + Correggi, motivo);
}

void ModelloTabella::Annulla()
{
    if (m_sospesa < 0)
        return;
    const int riga = m_sospesa;
    m_sospesa = -1;
    if (m_righe[riga].id == 0) {
        // A new row is always the last on the list: the empty one moves up.
        beginRemoveRows({}, riga, riga);
        m_righe.removeAt(riga);
        endRemoveRows();
    } else {
        m_righe[riga].valori = m_originali;
        emit dataChanged(index(riga, 0), index(riga, columnCount() - 1));
    }
    m_originali.clear();
    emit headerDataChanged(Qt::Vertical, riga, riga);
}

QString ModelloTabella::Elimina(int riga)
{
    if (riga == m_sospesa && m_righe[riga].id == 0) {
        Annulla();
        return {};
    }
    if (riga < 0 || riga >= m_righe.size())
        return {};
    Transazione t;
    Recordset rs = Recordset::Apri(Db(), m_tabella.tabella, dbOpenTable);
    const bool ok = t.attiva() && rs.IsOpen() && rs.SetBookmark(m_righe[riga].id) && rs.Delete();
    const QString motivo = !t.attiva() ? t.errore() : rs.Errore();
    rs.Close();
    if (ok && t.conferma())
        return {};
    return TestoGuasto(QStringLiteral("LA RIGA NON E' STATA ELIMINATA."),
                       ok ? t.errore() : motivo);
}

} // namespace sorvane
