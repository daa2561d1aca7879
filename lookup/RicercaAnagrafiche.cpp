#include "lookup/RicercaAnagrafiche.h"

#include "store/Schema.h"

#include <QStringList>

namespace sorvane {

namespace {

const char *const CampiBox[NumeroBoxAnagrafica + 1] = {
    "",           "CliPartitaIva", "CliCodiceFiscale", "CliRagSoc",    "CliCap",
    "CliProvincia", "CliNazione",  "CliSesso",         "CliTelefono",  "CliAttivita",
    "CliRelazione", "CliReferenze", "CliRiconosci"};

const char *const CampiColonne[NumeroColonneAnagrafica] = {
    "CliCodice",    "CliAbbinamento", "CliRagsocEstesa", "CliRagsoc",        "CliIndirizzo",
    "CliCap",       "CliLocalita",    "CliProvincia",    "CliNazione",       "CliSesso",
    "CliTelefono",  "CliTelefono1",   "CliTelefono2",    "CliTelefono3",     "CliCodiceFiscale",
    "CliContoCo",   "CliAttivita",    "CliRelazione",    "CliReferenze",     "CliRiconosci"};

const char *const Titoli[NumeroColonneAnagrafica] = {
    "CODICE",     "ABBIN.",     "GRUPPO",     " RAGIONE SOCIALE", " INDIRIZZO",
    " CAP",       " LOCALITA'", "PV",         "NAZ",              "S",
    " TELEFONO",  " TELEFONO1", " TELEFONO2", " FAX",             " CODICE FISCALE",
    " CONTO CORRENTE", "ATT.",  "REL.",       "REF.",             "RIC."};

// One character of the visits' pattern for a month nobody asked for.
constexpr QChar MeseQualsiasi = QLatin1Char('?');

QString Colonne(const QString &prefisso)
{
    QStringList c;
    for (const char *campo : CampiColonne)
        c << prefisso + QLatin1String(campo);
    return c.join(QStringLiteral(", "));
}

} // namespace

QString CampoBox(int box)
{
    if (box < 1 || box > NumeroBoxAnagrafica)
        return QString();
    return QLatin1String(CampiBox[box]);
}

QString CampoColonna(int colonna)
{
    if (colonna < 0 || colonna >= NumeroColonneAnagrafica)
        return QString();
    return QLatin1String(CampiColonne[colonna]);
}

QString TitoloColonna(int colonna)
{
    if (colonna < 0 || colonna >= NumeroColonneAnagrafica)
        return QString();
    return QLatin1String(Titoli[colonna]);
}

QString MesiDelleVisite(const std::array<bool, MesiVisite> &mesi)
{
    QString s;
    for (bool acceso : mesi)
        s += acceso ? QLatin1Char('S') : MeseQualsiasi;
    return s;
}

QString ModelloVisite(const std::array<bool, MesiVisite> &mesi)
{
    const QString dodici = MesiDelleVisite(mesi);
    if (dodici == QString(MesiVisite, MeseQualsiasi))
        return QString();
    // The stored field ends with a blank after the twelve months.
    return ModelloLike(dodici + QLatin1Char(' '));
}

QString ModelloLike(const QString &testo)
{
    QString m;
    m.reserve(testo.size() + 2);
    for (QChar c : testo) {
        if (c == QLatin1Char('*'))
            m += QLatin1Char('%');
        else if (c == QLatin1Char('?'))
            m += QLatin1Char('_');
        else if (c == QLatin1Char('%') || c == QLatin1Char('_') || c == QLatin1Char('\\'))
            m += QLatin1Char('\\') + c;
        else
            m += c;
    }
    return m;
}

SqlRicerca CondizioniAnagrafiche(const CriteriAnagrafiche &criteri)
{
    SqlRicerca s;
    const QString azione = criteri.azione.trimmed();
    s.testo = QStringLiteral(" FROM Clienti");
    if (!azione.isEmpty())
        s.testo += QStringLiteral(" INNER JOIN Azioni ON Clienti.CliCodice = Azioni.AzCliente");

    QStringList condizioni;
    for (int box = 1; box <= NumeroBoxAnagrafica; ++box) {
        const QString testo = criteri.testi[box].trimmed();
        if (testo.isEmpty())
            continue;
        if (box == BoxSesso) {
            condizioni << QStringLiteral("(CliSesso = ?)");
            s.parametri << testo;
        } else {
            // A prefix: what was typed, then any run of characters.
            condizioni << QStringLiteral("(%1 LIKE ? ESCAPE '\\')").arg(CampoBox(box));
            s.parametri << ModelloLike(testo + QLatin1Char('*'));
        }
    }
    const QString visite = ModelloVisite(criteri.mesi);
    if (!visite.isEmpty()) {
        condizioni << QStringLiteral("(CliVisite LIKE ? ESCAPE '\\')");
        s.parametri << visite;
    }
    if (criteri.abbinati)
        condizioni << QStringLiteral("(CliAbbinamento > 0)");
    if (criteri.gruppi)
        condizioni << QStringLiteral("(CliRagSocEstesa > '')");
    condizioni << (criteri.chiusi ? QStringLiteral("(CliCategoria = 'ZZZZZ')")
                                  : QStringLiteral("(CliCategoria <> 'ZZZZZ')"));
    if (!azione.isEmpty()) {
        condizioni << QStringLiteral("(AzCodice = ?)") << QStringLiteral("(AzDelete = ' ')");
        s.parametri << azione;
    }
    s.testo += QStringLiteral(" WHERE ") + condizioni.join(QStringLiteral(" AND "));
    return s;
}

QString OrdineSql(const OrdineAnagrafiche &ordine)
{
    const QString verso = ordine.verso == VersoCrescente ? QStringLiteral(" ASC")
                                                         : QStringLiteral(" DESC");
    const int n = ordine.colonna;
    QString clausola;
    switch (n) {
    case AnaAbbinamento:
    case AnaGruppo:
    case AnaRagSoc:
    case AnaTelefono:
    case AnaTelefono1:
    case AnaTelefono2:
    case AnaFax:
    case AnaContoCorrente:
    case AnaAttivita:
    case AnaRelazione:
    case AnaReferenze:
    case AnaRiconosci:
        clausola = CampoColonna(n) + verso;
        break;
    case AnaIndirizzo:
        clausola = CampoColonna(n) + verso + QStringLiteral(", CliAbbinamento ASC");
        break;
    case AnaCap:
    case AnaLocalita:
    case AnaProvincia:
        clausola = CampoColonna(n) + verso + QStringLiteral(", CliAbbinamento ASC, CliRagSoc");
        break;
    case AnaNazione:
    case AnaSesso:
    case AnaCodiceFiscale:
        clausola = CampoColonna(n) + verso + QStringLiteral(", CliRagSoc ASC");
        break;
    default:
        clausola = QStringLiteral("CliCodice") + verso;
        break;
    }
    return QStringLiteral(" ORDER BY ") + clausola;
}

SqlRicerca SqlAnagrafiche(const CriteriAnagrafiche &criteri, const OrdineAnagrafiche &ordine)
{
    SqlRicerca s = CondizioniAnagrafiche(criteri);
    s.testo = QStringLiteral("SELECT ") + Colonne(QStringLiteral("Clienti.")) + s.testo
              + OrdineSql(ordine);
    return s;
}

SqlRicerca SqlRigheClienti(const CriteriAnagrafiche &criteri, const OrdineAnagrafiche &ordine)
{
    SqlRicerca s = CondizioniAnagrafiche(criteri);
    s.testo = QStringLiteral("SELECT ") + CampiClienti(QStringLiteral("Clienti.")) + s.testo
              + OrdineSql(ordine);
    return s;
}

QString CampiClienti(const QString &prefisso)
{
    QStringList c;
    for (const Colonna &colonna : TrovaTabella(QStringLiteral("Clienti"))->colonne)
        c << prefisso + colonna.nome;
    return c.join(QStringLiteral(", "));
}

} // namespace sorvane
