#include "tables/CambiDati.h"

#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Valore.h"
#include "store/Connessione.h"
#include "store/Schema.h"
#include "store/Transazione.h"

#include <algorithm>

namespace sorvane {

namespace {

const QString Nazioni = QStringLiteral("TabNazioni");
const QString CmbMoneta = QStringLiteral("CmbMoneta");
const QString CmbData = QStringLiteral("CmbData");
const QString CmbValore = QStringLiteral("CmbValore");

const char *const Intestazioni[ColonneCambi] = {"COD.", "DESCRIZIONE", "RAPPORTO",
                                               "N", "VAR. %", "RAPP. ORIGIN."};

void SenzaCambio(RigaCambi &riga)
{
    riga[ColRapporto] = QStringLiteral("0");
    riga[ColNonDelGiorno] = QStringLiteral("N");
    riga[ColVariazione].clear();
    riga[ColOriginale].clear();
}

bool Fallito(QString *errore, const QString &frase, const QString &motivo)
{
    if (errore)
        *errore = TestoGuasto(frase, motivo);
    return false;
}

} // namespace

StatoGesCambi &gesCambi()
{
    static StatoGesCambi s;
    return s;
}

QString TitoloCambi(std::uint8_t modo)
{
    switch (modo) {
    case CambiAreaEuro:
        return QStringLiteral("Valute area EURO: Gestione rapporti rispetto un EURO");
    case CambiExtraEuro:
        return QStringLiteral("Valute extraEURO: Gestione rapporti rispetto un EURO");
    default:
        return QStringLiteral("Ricerca valute generiche");
    }
}

QString IntestazioneCambi(int colonna)
{
    return colonna >= 0 && colonna < ColonneCambi ? QString::fromLatin1(Intestazioni[colonna])
                                                  : QString();
}

QString SqlValute(std::uint8_t modo)
{
    QString sql = QStringLiteral("SELECT ") + Nazioni + QStringLiteral(".* FROM ") + Nazioni
                  + QStringLiteral(" WHERE GesCmb > 0 ");
    if (modo == CambiAreaEuro)
        sql += QStringLiteral("AND TipoNaz = 'S'");
    else if (modo == CambiExtraEuro)
        sql += QStringLiteral("AND TipoNaz = 'N'");
    return sql + QStringLiteral(" ORDER BY GesCmb");
}

QString TestoRapporto(double valore)
{
    return Format(valore, QStringLiteral("#,##0.000000"));
}

double ValoreRapporto(const QString &testo)
{
    return LeggiImporto(testo.trimmed()).value_or(0);
}

bool ElencoCambi::caricaValute(std::uint8_t modo, QString *errore)
{
    m_righe.clear();
    m_posti.clear();
    Recordset rs = Recordset::Apri(Db(), SqlValute(modo), dbOpenSnapshot);
    if (!rs.IsOpen())
        return Fallito(errore, QStringLiteral("Errore in apertura tabella NAZIONI"), rs.Errore());
    for (; !rs.Eof(); rs.MoveNext()) {
        RigaCambi riga;
        riga[ColCodiceMoneta] = TestoDaCampo(rs.Fields(QStringLiteral("Codice"))).trimmed();
        riga[ColDescrizione] = TestoDaCampo(rs.Fields(QStringLiteral("Descrizione"))).trimmed();
        m_righe.append(riga);
        qint64 posto = 0;
        LeggiIntero(rs.Fields(QStringLiteral("GesCmb")), 1, 2147483647, &posto);
        m_posti.append(posto);
    }
    rs.Close();
    return true;
}

void ElencoCambi::caricaCambi(Recordset &cambi, double giorno)
{
    for (RigaCambi &riga : m_righe) {
        const QString &codice = riga[ColCodiceMoneta];
        // "<=" runs into the last row of the currency before this one when
        // this one has no rate old enough: that row is not its rate.
        if (!cambi.Seek(QStringLiteral("<="), QVariantList{codice, giorno}) || cambi.NoMatch()
            || TestoDaCampo(cambi.Fields(CmbMoneta)).trimmed().compare(codice, Qt::CaseInsensitive)
                   != 0) {
            SenzaCambio(riga);
            continue;
        }
        riga[ColRapporto] = TestoRapporto(CDbl(DataDaCampo(cambi.Fields(CmbValore))));
        const bool delGiorno = CDbl(DataDaCampo(cambi.Fields(CmbData))) == giorno;
        riga[ColNonDelGiorno] = delGiorno ? QString() : QStringLiteral("N");
        riga[ColVariazione].clear();
        riga[ColOriginale] = riga[ColRapporto];
    }
}

void ElencoCambi::modificaRapporto(int riga, const QString &testo)
{
    if (riga < 0 || riga >= size())
        return;
    RigaCambi &r = m_righe[riga];
    QString nuovo = testo.trimmed();
    if (!LeggiImporto(nuovo) || nuovo.isEmpty())
        nuovo = QStringLiteral("0");
    r[ColRapporto] = nuovo;
    const double prima = ValoreRapporto(r[ColOriginale]);
    if (prima > 0) {
        const double adesso = ValoreRapporto(nuovo);
        r[ColVariazione] = Format((adesso - prima) * 100 / prima, QStringLiteral("#0.000"));
    }
}

void ElencoCambi::sposta(int da, int a)
{
    if (da < 0 || a < 0 || da >= size() || a >= size() || da == a)
        return;
    m_righe.move(da, a);
}

bool ElencoCambi::conferma(Recordset &cambi, double giorno, QString *errore) const
{
    const QString frase = QStringLiteral(
        "ERRORE NELLA REGISTRAZIONE DEI CAMBI: NESSUN CAMBIO DEL GIORNO È STATO MODIFICATO.");
    Transazione t;
    if (!t.attiva())
        return Fallito(errore, frase, t.errore());
    for (const RigaCambi &riga : m_righe) {
        const QString &codice = riga[ColCodiceMoneta];
        const double valore = ValoreRapporto(riga[ColRapporto]);
        if (!cambi.Seek(QStringLiteral("="), QVariantList{codice, giorno}))
            return Fallito(errore, frase, cambi.Errore());
        bool fatto = true;
        if (!(valore > 0)) {
            if (!cambi.NoMatch())
                fatto = cambi.Delete();
        } else {
            fatto = (cambi.NoMatch() ? cambi.AddNew() : cambi.Edit())
                    && cambi.SetField(CmbMoneta, codice) && cambi.SetField(CmbData, giorno)
                    && cambi.SetField(CmbValore, valore) && cambi.Update();
        }
        if (!fatto) {
            const QString motivo = cambi.Errore();
            cambi.CancelUpdate();
            return Fallito(errore, frase, motivo);
        }
    }
    if (!t.conferma())
        return Fallito(errore, frase, t.errore());
    return true;
}

bool ElencoCambi::salvaOrdine(QString *errore)
{
    Recordset nazioni = Recordset::Apri(Db(), Nazioni);
    if (!nazioni.IsOpen() || !nazioni.SetIndex(IndicePrimario))
        return Fallito(errore, QStringLiteral("Errore in apertura tabella NAZIONI"),
                       nazioni.Errore());
    const QString frase =
        QStringLiteral("ERRORE NEL SALVATAGGIO DELL'ORDINE DELLE VALUTE: L'ORDINE RESTA QUELLO DI PRIMA.");
    // Each row takes the next place held, and never one below the row
    // before it, so that equal numbers read before no longer tie.
    QList<qint64> posti;
    qint64 ultimo = 0;
    for (int i = 0; i < size(); ++i) {
        ultimo = std::max(m_posti.value(i), ultimo + 1);
        posti.append(ultimo);
    }
    Transazione t;
    bool fatto = t.attiva();
    for (int i = 0; fatto && i < size(); ++i) {
        fatto = nazioni.Seek(QStringLiteral("="), QVariantList{m_righe[i][ColCodiceMoneta]});
        if (fatto && nazioni.NoMatch())
            continue; // gone since the list was read
        fatto = fatto && nazioni.Edit() && nazioni.SetField(QStringLiteral("GesCmb"), posti[i])
                && nazioni.Update();
    }
    const QString motivo = t.attiva() ? nazioni.Errore() : t.errore();
    if (!fatto) {
        nazioni.CancelUpdate();
        nazioni.Close();
        return Fallito(errore, frase, motivo);
    }
    nazioni.Close();
    if (!t.conferma())
        return Fallito(errore, frase, t.errore());
    m_posti = posti;
    return true;
}

} // namespace sorvane
