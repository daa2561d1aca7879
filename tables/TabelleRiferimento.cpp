#include "tables/TabelleRiferimento.h"

namespace sorvane {

namespace {

TabellaRiferimento Tabella(const char *schermo, const char *titolo, const char *tabella,
                           const char *ordine, const char *guasto, const char *dati,
                           QList<ColonnaRiferimento> colonne, bool tab)
{
    TabellaRiferimento t;
    t.schermo = QString::fromLatin1(schermo);
    t.titolo = QString::fromLatin1(titolo);
    t.tabella = QString::fromLatin1(tabella);
    t.ordine = QString::fromLatin1(ordine);
    t.sorgente = QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(t.tabella, t.ordine);
    t.guasto = QString::fromLatin1(guasto);
    t.sorgenteDati = QString::fromLatin1(dati);
    t.colonne = std::move(colonne);
    t.tabNellaGriglia = tab;
    return t;
}

ColonnaRiferimento C(const char *intestazione, const char *campo, int larghezza,
                     bool segno = false)
{
    return {QString::fromLatin1(intestazione), QString::fromLatin1(campo), larghezza, segno};
}

} // namespace

const TabellaRiferimento &TabellaDitte()
{
    static const TabellaRiferimento t = Tabella(
        "GesSoc", "GESTIONE DITTE PER LE DISTINTE", "Societa", "SocNome",
        "ERRORE IN APERTURA TABELLA 'SOCIETA'", "DataSoc",
        {C("Ragione Sociale", "SocNome", 35), C("Indirizzo / IBAN", "SocIndirizzo", 35),
         C("CAP", "SocCap", 5), C("Localita'", "SocLocalita", 35), C("Pv", "SocProvincia", 2)},
        false);
    return t;
}

const TabellaRiferimento &TabellaBanche()
{
    static const TabellaRiferimento t =
        Tabella("GesBanca", "GESTIONE BANCHE PER LE DISTINTE", "DistBanche", "CodBanca",
                "ERRORE IN APERTURA TABELLA 'BANCHE'", "DataSoc", {C("BANCA", "CodBanca", 30)},
                false);
    return t;
}

const TabellaRiferimento &TabellaCausali()
{
    static const TabellaRiferimento t = Tabella(
        "GesCauDs", "GESTIONE CAUSALI PER LE DISTINTE", "DistCausali", "Codice",
        "ERRORE IN APERTURA TABELLA 'CAUSALI PER DISTINTE'", "Data1",
        {C("COD.", "Codice", 3), C("DESCRIZIONE", "Descrizione", 20), C("S", "Segno", 1, true)},
        true);
    return t;
}

QString SegnoMostrato(const QString &valore)
{
    return valore.trimmed().isEmpty() ? QStringLiteral("+") : valore;
}

} // namespace sorvane
