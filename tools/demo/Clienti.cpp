// The clients of the demo office, their teams and their visits.

#include "tools/demo/Nomi.h"
#include "tools/demo/Ufficio.h"

#include "frame/core/Giorni.h"

#include <cmath>

namespace sorvane::demo {
namespace {

constexpr int NumeroClienti = 320;
constexpr int NumeroSquadre = 24;

const char *const Attivita[][2] = {
    {"PEN", "PENSIONATO"},  {"IMP", "IMPIEGATO"},     {"LIB", "LIBERO PROFESSIONISTA"},
    {"IMD", "IMPRENDITORE"}, {"ART", "ARTIGIANO"},    {"COM", "COMMERCIANTE"},
    {"DIR", "DIRIGENTE"},   {"CAS", "CASALINGA"},
};
const char *const Referenze[][2] = {
    {"CLI", "SEGNALATO DA CLIENTE"}, {"AMI", "AMICI E PARENTI"},
    {"BAN", "SEGNALATO DALLA BANCA"}, {"PUB", "PUBBLICITA'"},
};
const char *const Relazioni[][2] = {
    {"OTT", "OTTIMA"}, {"BUO", "BUONA"}, {"SUF", "SUFFICIENTE"}, {"DIF", "DIFFICILE"},
};
const char *const Riconoscimenti[][2] = {
    {"DIR", "CONOSCENZA DIRETTA"}, {"DOC", "DOCUMENTO"}, {"TER", "TRAMITE TERZI"},
};
const char *const Azioni[][2] = {
    {"VIS", "VISITA IN UFFICIO"}, {"DOM", "VISITA A DOMICILIO"}, {"TEL", "TELEFONATA"},
    {"DOC", "FIRMA DOCUMENTI"},   {"REN", "RENDICONTO ANNUALE"},
};
const char *const Note[] = {
    "PREFERISCE ESSERE CHIAMATO DOPO LE 18", "INTERESSATO A FONDI ETICI",
    "CHIEDE RENDICONTO SEMESTRALE", "PROFILO PRUDENTE, NO AZIONARIO",
    "SEGUE ANCHE IL PORTAFOGLIO DEI FIGLI", "DELEGA IL CONIUGE PER LE FIRME",
};

struct Visita
{
    int giorno;
    double saldo;
};

// Lire before the euro, whole; euro with their cents.
double Denaro(double euro, int giorno)
{
    if (giorno < GiornoEuro)
        return std::round(euro * 1936.27);
    return std::round(euro * 100) / 100;
}

int Feriale(int giorno)
{
    const int dow = DataDaGiorno(giorno).dayOfWeek();
    return dow > 5 ? giorno + (8 - dow) : giorno;
}

std::vector<Visita> Visite(Caso &caso, const ClienteDemo &c, int inizio)
{
    std::vector<Visita> visite;
    const double capitale = 20000 * c.peso;
    for (int g = inizio + caso.intero(10, 150); g <= c.al; g += caso.intero(60, 220)) {
        const int giorno = Feriale(g);
        if (giorno > c.al)
            break;
        const double anni = (giorno - inizio) / 365.25;
        visite.push_back({giorno, Denaro(capitale * (1 + 0.05 * anni), giorno)});
    }
    return visite;
}

// One client card. The team goes in the extended name as its number.
struct Scheda
{
    Persona persona;
    QString ragsoc;
    QString estesa;
    QString indirizzo;
    const Comune *comune = nullptr;
    bool societa = false;
    int squadra = 0;
};

class Anagrafe
{
public:
    Anagrafe(QSqlDatabase &db, Caso &caso, Ufficio &ufficio)
        : m_caso(caso), m_ufficio(ufficio),
          m_clienti(db, QStringLiteral("Clienti"),
                    QStringLiteral("CliCodice CliRagsoc CliRagsocEstesa CliIndirizzo "
                                   "CliLocalita CliCap CliProvincia CliNazione CliTelefono "
                                   "CliTelefono1 CliPartitaIva CliCodiceFiscale CliCategoria "
                                   "CliSesso CliNatoA CliNatoIl CliDocumTipo CliDocumento "
                                   "CliDocRilascA CliDocRilascIl CliContoCo CliAbbinamento "
                                   "CliUltimaVisita CliOraVisita CliNote CliEta CliRischio "
                                   "CliRischioData CliRelazione CliRiconosci CliReferenze "
                                   "CliAttivita")
                        .split(QLatin1Char(' '))),
          m_squadre(db, QStringLiteral("Squadre"),
                    {QStringLiteral("Squadra"), QStringLiteral("Cliente")}),
          m_visite(db, QStringLiteral("VisiteN"),
                   {QStringLiteral("VsCliente"), QStringLiteral("VsData"),
                    QStringLiteral("VsSaldo")})
    {
    }

    bool scrivi(QString *errore);

private:
    Scheda persona(const QString &cognome, const Comune *comune, const QString &indirizzo);
    Scheda societa(const QString &cognome, const Comune *comune, const QString &indirizzo);
    bool registra(const Scheda &s, QString *errore);
    bool fallito(const Inserimento &ins, QString *errore)
    {
        *errore = ins.errore();
        return false;
    }

    Caso &m_caso;
    Ufficio &m_ufficio;
    Inserimento m_clienti;
    Inserimento m_squadre;
    Inserimento m_visite;
};

Scheda Anagrafe::persona(const QString &cognome, const Comune *comune,
                         const QString &indirizzo)
{
    Scheda s;
    s.persona = NuovaPersona(m_caso, cognome);
    s.ragsoc = (s.persona.cognome + QLatin1Char(' ') + s.persona.nome).left(35);
    s.comune = comune ? comune : &ScegliComune(m_caso);
    s.indirizzo = indirizzo.isEmpty() ? Indirizzo(m_caso) : indirizzo;
    return s;
}

Scheda Anagrafe::societa(const QString &cognome, const Comune *comune,
                         const QString &indirizzo)
{
    Scheda s;
    s.societa = true;
    s.ragsoc = RagioneSociale(m_caso, cognome.isEmpty() ? CognomeCaso(m_caso) : cognome);
    s.comune = comune ? comune : &ScegliComune(m_caso);
    s.indirizzo = indirizzo.isEmpty() ? Indirizzo(m_caso) : indirizzo;
    return s;
}

bool Anagrafe::registra(const Scheda &s, QString *errore)
{
    Caso &caso = m_caso;
    ClienteDemo c;
    c.codice = qint32(m_ufficio.clienti.size() + 1);
    const int primoEuro = GiornoDaData(QDate(1999, 1, 1));
    c.dal = caso.prob(0.35) ? GiornoDaData(QDate(caso.intero(1988, 1998), 1, 1)) +
                                  caso.intero(0, 364)
                            : caso.intero(primoEuro, m_ufficio.oggi - 90);
    const int inizio = qMax(c.dal, primoEuro);
    const bool chiuso = s.squadra == 0 && caso.prob(0.09) && m_ufficio.oggi - inizio > 800;
    c.al = chiuso ? caso.intero(inizio + 700, m_ufficio.oggi - 60) : m_ufficio.oggi;
    c.ditta = caso.prob(0.7) ? int(caso.indice(2)) : int(caso.indice(m_ufficio.ditte.size()));
    c.peso = std::exp(0.9 * (caso.reale() + caso.reale() + caso.reale() - 1.5));
    m_ufficio.clienti.push_back(c);

    const std::vector<Visita> visite = Visite(caso, c, inizio);
    const int ultima = visite.empty() ? 0 : visite.back().giorno;
    QString categoria = QStringLiteral("ZZZZZ");
    if (!chiuso) {
        const int r = caso.intero(0, 99);
        categoria = r < 30 ? QStringLiteral("A") : (r < 75 ? QStringLiteral("B")
                                                           : QStringLiteral("C"));
    }
    const Persona &p = s.persona;
    const bool persona = !s.societa;
    const QDate oggi = DataDaGiorno(m_ufficio.oggi);
    // A person's tax code comes from the card; a firm's is its VAT number.
    const QString partitaIva = persona ? QString() : PartitaIva(caso);
    const QString codiceFiscale = persona ? CodiceFiscale(p) : partitaIva;
    const QString cellulare = persona ? Cellulare(caso) : QString();
    const QString telefono = Telefono(caso, *s.comune);
    const QString tipoDocumento = QLatin1String(caso.prob(0.8) ? "C" : "P");
    QString documento = QStringLiteral("A") + QLatin1Char(char('A' + caso.intero(0, 25)));
    documento += QString::number(caso.intero(1000000, 9999999));
    const QDate rilascio = oggi.addDays(-caso.intero(30, 3600));
    const QString iban = Iban(caso);
    QString ora;
    if (ultima) {
        const int ore = caso.intero(9, 18);
        ora = QStringLiteral("%1:%2").arg(ore, 2, 10, QLatin1Char('0'))
                  .arg(caso.prob(0.5) ? 0 : 30, 2, 10, QLatin1Char('0'));
    }
    const QString nota = caso.prob(0.1) ? QLatin1String(caso.scegli(Note)) : QString();
    const QString rischio = QString::number(caso.intero(1, 4));
    const double dataRischio = m_ufficio.oggi - caso.intero(0, 1000);
    const QString relazione = QLatin1String(caso.scegli(Relazioni)[0]);
    const QString riconoscimento = QLatin1String(caso.scegli(Riconoscimenti)[0]);
    const QString referenza = QLatin1String(caso.scegli(Referenze)[0]);
    const QString attivita = QLatin1String(persona ? caso.scegli(Attivita)[0] : "IMD");
    // Null QStrings go in as NULL: a firm has no sex, birth place or mobile.
    const QVariantList riga = {
        c.codice, s.ragsoc, s.estesa, s.indirizzo, QLatin1String(s.comune->nome),
        QLatin1String(s.comune->cap), QLatin1String(s.comune->provincia),
        QStringLiteral("ITA"), telefono, cellulare, partitaIva, codiceFiscale, categoria,
        persona ? QString(QLatin1Char(p.donna ? 'F' : 'M')) : QString(),
        persona ? QString::fromLatin1(p.natoA->nome) : QString(),
        persona ? QVariant(double(GiornoDaData(p.nascita))) : QVariant(), tipoDocumento,
        documento, QStringLiteral("COMUNE DI ") + QLatin1String(s.comune->nome),
        rilascio.toString(QStringLiteral("dd/MM/yyyy")), iban, 0, ultima, ora, nota,
        persona ? p.nascita.daysTo(oggi) / 365 : 0, rischio, dataRischio, relazione,
        riconoscimento, referenza, attivita};
    if (!m_clienti.scrivi(riga))
        return fallito(m_clienti, errore);
    if (s.squadra && !m_squadre.scrivi({s.squadra, c.codice}))
        return fallito(m_squadre, errore);
    for (const Visita &v : visite)
        if (!m_visite.scrivi({c.codice, double(v.giorno), v.saldo}))
            return fallito(m_visite, errore);
    return true;
}

bool Anagrafe::scrivi(QString *errore)
{
    Caso &caso = m_caso;
    int squadra = 0;
    int testiLiberi = 0;
    while (m_ufficio.clienti.size() < NumeroClienti) {
        const int restano = NumeroClienti - int(m_ufficio.clienti.size());
        if (squadra < NumeroSquadre && restano >= 4 && caso.prob(0.12)) {
            // A family: one address, the children with the parent's surname,
            // sometimes the family's firm.
            ++squadra;
            const QString cognome = CognomeCaso(caso);
            const Comune *comune = &ScegliComune(caso);
            const QString indirizzo = Indirizzo(caso);
            const int membri = caso.intero(2, 4);
            for (int i = 0; i < membri; ++i) {
                Scheda s = i == 3 && caso.prob(0.5) ? societa(cognome, comune, indirizzo)
                    : persona(i == 1 ? QString() : cognome, comune, indirizzo);
                s.squadra = squadra;
                s.estesa = QString::number(squadra);
                if (!registra(s, errore))
                    return false;
            }
            continue;
        }
        // Client 7 makes sure of an apostrophe in a surname, whatever the seed.
        const bool apostrofo = m_ufficio.clienti.size() == 6;
        Scheda s = !apostrofo && caso.prob(0.14)
            ? societa(QString(), nullptr, QString())
            : persona(apostrofo ? QStringLiteral("DELL'ORTO") : QString(), nullptr, QString());
        // Now and then the extended name holds a plain note instead of a team.
        if (testiLiberi < 2 && caso.prob(0.01)) {
            s.estesa = testiLiberi++ ? QStringLiteral("EREDI") : QStringLiteral("C/O STUDIO");
        }
        if (!registra(s, errore))
            return false;
    }
    return true;
}

} // namespace

bool ScriviClienti(QSqlDatabase &db, Caso &caso, Ufficio &ufficio, QString *errore)
{
    if (!ScriviCodici(db, "TabCliAttivita", Attivita, errore) ||
        !ScriviCodici(db, "TabCliReferenze", Referenze, errore) ||
        !ScriviCodici(db, "TabCliRelazioni", Relazioni, errore) ||
        !ScriviCodici(db, "TabCliRiconoscimenti", Riconoscimenti, errore))
        return false;
    if (!ScriviCodici(db, "TabAzioni", Azioni, errore,
                      {QStringLiteral("TbaCodice"), QStringLiteral("TbaDescrizione")}))
        return false;
    Anagrafe anagrafe(db, caso, ufficio);
    if (!anagrafe.scrivi(errore))
        return false;

    // The coming weeks' appointments of a few clients.
    Inserimento app(db, QStringLiteral("Appuntamenti"),
                    {QStringLiteral("ApCliente"), QStringLiteral("ApData"),
                     QStringLiteral("ApAzione")});
    for (int i = 0; i < 15; ++i) {
        const ClienteDemo &c = caso.scegli(ufficio.clienti);
        if (c.al < ufficio.oggi)
            continue;
        const int giorno = Feriale(ufficio.oggi + caso.intero(1, 30));
        const double ora = caso.intero(18, 36) / 48.0; // half hours, 9:00 to 18:00
        if (!app.scrivi({c.codice, giorno + ora, QLatin1String(caso.scegli(Azioni)[0])})) {
            *errore = app.errore();
            return false;
        }
    }
    return true;
}

} // namespace sorvane::demo
