#include "tools/demo/Nomi.h"

#include <iterator>

namespace sorvane::demo {
namespace {

// The office stands between the lake and the Brianza: most clients live
// in the first sixteen towns.
const Comune Comuni[] = {
    {"LECCO", "LC", "23900", "E507", "0341"},
    {"VALMADRERA", "LC", "23868", "L581", "0341"},
    {"OGGIONO", "LC", "23848", "G009", "0341"},
    {"OLGINATE", "LC", "23854", "G030", "0341"},
    {"CALOLZIOCORTE", "LC", "23801", "B423", "0341"},
    {"MANDELLO DEL LARIO", "LC", "23826", "E879", "0341"},
    {"MERATE", "LC", "23807", "F133", "039"},
    {"COMO", "CO", "22100", "C933", "031"},
    {"ERBA", "CO", "22036", "D416", "031"},
    {"CANTU'", "CO", "22063", "B639", "031"},
    {"MONZA", "MB", "20900", "F704", "039"},
    {"VIMERCATE", "MB", "20871", "M052", "039"},
    {"SEREGNO", "MB", "20831", "I625", "0362"},
    {"MILANO", "MI", "20121", "F205", "02"},
    {"BERGAMO", "BG", "24121", "A794", "035"},
    {"SONDRIO", "SO", "23100", "I829", "0342"},
    {"BRESCIA", "BS", "25121", "B157", "030"},
    {"TORINO", "TO", "10121", "L219", "011"},
    {"GENOVA", "GE", "16121", "D969", "010"},
    {"VERONA", "VR", "37121", "L781", "045"},
    {"VENEZIA", "VE", "30121", "L736", "041"},
    {"TRENTO", "TN", "38122", "L378", "0461"},
    {"BOLOGNA", "BO", "40121", "A944", "051"},
    {"FIRENZE", "FI", "50122", "D612", "055"},
    {"ROMA", "RM", "00184", "H501", "06"},
    {"NAPOLI", "NA", "80121", "F839", "081"},
    {"BARI", "BA", "70121", "A662", "080"},
    {"PALERMO", "PA", "90133", "G273", "091"},
};
constexpr int ComuniVicini = 16;

const char *const ElencoProvince[][2] = {
    {"BA", "BARI"}, {"BG", "BERGAMO"}, {"BO", "BOLOGNA"}, {"BS", "BRESCIA"},
    {"CO", "COMO"}, {"FI", "FIRENZE"}, {"GE", "GENOVA"}, {"LC", "LECCO"},
    {"MB", "MONZA E BRIANZA"}, {"MI", "MILANO"}, {"NA", "NAPOLI"},
    {"PA", "PALERMO"}, {"RM", "ROMA"}, {"SO", "SONDRIO"}, {"TN", "TRENTO"},
    {"TO", "TORINO"}, {"VE", "VENEZIA"}, {"VR", "VERONA"},
};

const char *const Cognomi[] = {
    "ROSSI", "BIANCHI", "COLOMBO", "BRAMBILLA", "FUMAGALLI", "MAGNI", "VILLA",
    "SALA", "RIVA", "CATTANEO", "MAURI", "CASATI", "CORTI", "PIROVANO",
    "RIGAMONTI", "SPREAFICO", "VALSECCHI", "BONFANTI", "PEREGO", "ROTA",
    "FERRARI", "ESPOSITO", "RUSSO", "ROMANO", "GALLO", "CONTI", "BRUNO",
    "RICCI", "MARINO", "GRECO", "LOMBARDI", "MORETTI", "BARBIERI", "FONTANA",
    "SANTORO", "MARIANI", "RINALDI", "CARUSO", "GALLI", "MARTINI", "LEONE",
    "LONGO", "GENTILE", "MARTINELLI", "VITALE", "SERRA", "DE SANTIS",
    "DE LUCA", "LO BIANCO", "DI STEFANO", "LA ROSA", "CREMONESI", "BERETTA",
    "LOCATELLI", "MAGGIONI", "PANZERI", "TENTORI", "BOLIS", "INVERNIZZI",
    "GIUDICI", "AIROLDI", "CASTELLI", "NAVA", "RADAELLI", "TAGLIABUE",
    "BOSISIO", "CAZZANIGA", "SCACCABAROZZI", "D'AMICO", "D'ANGELO",
    "DELL'ORTO", "D'ALESSANDRO", "DELL'ACQUA", "DALL'ARA", "D'AGOSTINO",
    "D'ONOFRIO", "DALL'OGLIO", "D'URSO",
};

const char *const NomiUomo[] = {
    "MARIO", "GIUSEPPE", "LUIGI", "GIOVANNI", "ANTONIO", "FRANCESCO", "ANGELO",
    "CARLO", "PAOLO", "ROBERTO", "STEFANO", "ANDREA", "MARCO", "ALESSANDRO",
    "LUCA", "MATTEO", "DAVIDE", "FABIO", "MASSIMO", "GIORGIO", "SERGIO",
    "FRANCO", "BRUNO", "ENRICO", "PIETRO", "GIANLUCA", "RICCARDO", "DANIELE",
    "SIMONE", "AMBROGIO", "EMILIO", "ALBERTO", "GIANCARLO", "DARIO",
    "LORENZO", "NICOLA", "FEDERICO", "GABRIELE", "GIACOMO", "VITTORIO",
};

const char *const NomiDonna[] = {
    "MARIA", "ANNA", "GIUSEPPINA", "ROSA", "ANGELA", "GIOVANNA", "TERESA",
    "LUCIA", "CARLA", "PAOLA", "FRANCESCA", "ELENA", "LAURA", "CHIARA", "SARA",
    "GIULIA", "SILVIA", "SIMONA", "MONICA", "CRISTINA", "BARBARA",
    "ELISABETTA", "VALENTINA", "FEDERICA", "ALESSANDRA", "MARTINA", "FRANCA",
    "LUISA", "ROSANNA", "GABRIELLA", "DANIELA", "PATRIZIA", "ANTONELLA",
    "MARIANGELA", "RAFFAELLA", "EMANUELA", "NADIA", "ORNELLA", "GRAZIA",
    "ILARIA",
};

const char *const Vie[] = {
    "VIA GARIBALDI", "VIA MAZZINI", "VIA ROMA", "CORSO MATTEOTTI",
    "PIAZZA CAVOUR", "VIA DANTE ALIGHIERI", "VIA XX SETTEMBRE",
    "VIA DELL'INDUSTRIA", "VIA SANT'AMBROGIO", "VIA D'AZEGLIO",
    "VIALE DELLA VITTORIA", "VIA MANZONI", "VIA DON GNOCCHI",
    "VIA PAPA GIOVANNI XXIII", "VIA VOLTA", "VIA GRAMSCI", "VIA DEI MILLE",
    "VIA ALLE FORNACI", "VIA RISORGIMENTO", "VIA DELLE GRIGNE",
    "LUNGOLAGO ISONZO", "VIA PER GALBIATE", "VIA MONTE BARRO", "VIA STOPPANI",
};

// "%1" stands for a surname.
const char *const FormeSociali[] = {
    "%1 S.R.L.", "F.LLI %1 S.N.C.", "%1 & C. S.A.S.", "EDILIZIA %1 S.P.A.",
    "L'ARTIGIANA %1 S.N.C.", "STUDIO ASSOCIATO %1", "TRASPORTI %1 S.R.L.",
    "MECCANICA %1 S.R.L.", "IMMOBILIARE %1 S.R.L.", "OFFICINA %1 S.N.C.",
    "TESSITURA %1 S.P.A.", "FARMACIA %1 DR.",
};

// Only letters count in a tax code: "D'AMICO" gives DMC.
QString Lettere(const QString &testo)
{
    QString r;
    for (QChar c : testo)
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            r += c;
    return r;
}

bool Vocale(QChar c) { return QStringLiteral("AEIOU").contains(c); }

QString Consonanti(const QString &s)
{
    QString r;
    for (QChar c : s)
        if (!Vocale(c))
            r += c;
    return r;
}

QString Vocali(const QString &s)
{
    QString r;
    for (QChar c : s)
        if (Vocale(c))
            r += c;
    return r;
}

QString TreLettere(const QString &consonanti, const QString &vocali)
{
    return (consonanti + vocali + QStringLiteral("XXX")).left(3);
}

QChar CarattereControllo(const QString &quindici)
{
    static const int dispari[26] = {1,  0,  5,  7,  9,  13, 15, 17, 19, 21, 2,  4,
                                    18, 20, 11, 3,  6,  8,  12, 14, 16, 10, 22, 25,
                                    24, 23};
    int somma = 0;
    for (int i = 0; i < quindici.size(); ++i) {
        const QChar c = quindici.at(i);
        const int v = c.isDigit() ? c.digitValue() : c.unicode() - 'A';
        // Positions count from 1: the odd ones are the even indexes.
        somma += (i % 2 == 0) ? dispari[v] : v;
    }
    return QLatin1Char(char('A' + somma % 26));
}

QString Cifre(Caso &caso, int quante)
{
    QString r;
    for (int i = 0; i < quante; ++i)
        r += QLatin1Char(char('0' + caso.intero(0, 9)));
    return r;
}

// The doubling check of VAT numbers and ISIN codes, on a text of digits:
// digits at odd distance from the (missing) check digit are doubled.
int CifraLuhn(const QString &cifre)
{
    int somma = 0;
    for (int i = 0; i < cifre.size(); ++i) {
        int d = cifre.at(cifre.size() - 1 - i).digitValue();
        if (i % 2 == 0) {
            d *= 2;
            if (d > 9)
                d -= 9;
        }
        somma += d;
    }
    return (10 - somma % 10) % 10;
}

QString LettereInCifre(const QString &testo)
{
    QString r;
    for (QChar c : testo)
        r += c.isDigit() ? QString(c) : QString::number(c.unicode() - 'A' + 10);
    return r;
}

} // namespace

const Comune &ScegliComune(Caso &caso)
{
    if (caso.prob(0.88))
        return Comuni[caso.indice(ComuniVicini)];
    return Comuni[caso.indice(std::size(Comuni))];
}

int NumeroProvince() { return int(std::size(ElencoProvince)); }

const char *const *Province() { return &ElencoProvince[0][0]; }

QString CognomeCaso(Caso &caso) { return QLatin1String(caso.scegli(Cognomi)); }

Persona NuovaPersona(Caso &caso, const QString &cognome)
{
    Persona p;
    p.cognome = cognome.isEmpty() ? CognomeCaso(caso) : cognome;
    p.donna = caso.prob(0.47);
    p.nome = QLatin1String(p.donna ? caso.scegli(NomiDonna) : caso.scegli(NomiUomo));
    const int anno = caso.intero(1932, 1995);
    const int mese = caso.intero(1, 12);
    p.nascita = QDate(anno, mese, caso.intero(1, 28));
    p.natoA = &ScegliComune(caso);
    return p;
}

QString RagioneSociale(Caso &caso, const QString &cognome)
{
    return QString::fromLatin1(caso.scegli(FormeSociali)).arg(cognome).left(35);
}

QString Indirizzo(Caso &caso)
{
    QString civico = QString::number(caso.intero(1, 150));
    if (caso.prob(0.08))
        civico += QStringLiteral("/A");
    return (QLatin1String(caso.scegli(Vie)) + QLatin1Char(' ') + civico).left(35);
}

QString Telefono(Caso &caso, const Comune &comune)
{
    const QString prefisso = QLatin1String(comune.prefisso);
    return prefisso + QLatin1Char(' ') + Cifre(caso, 10 - int(prefisso.size()));
}

QString Cellulare(Caso &caso)
{
    const QString gestore = Cifre(caso, 2);
    return QStringLiteral("3%1 %2").arg(gestore, Cifre(caso, 7));
}

QString CodiceFiscale(const Persona &p)
{
    const QString cognome = Lettere(p.cognome);
    const QString nome = Lettere(p.nome);
    QString cf = TreLettere(Consonanti(cognome), Vocali(cognome));
    const QString consNome = Consonanti(nome);
    if (consNome.size() >= 4)
        cf += consNome.at(0) + QString(consNome.at(2)) + consNome.at(3);
    else
        cf += TreLettere(consNome, Vocali(nome));
    cf += QStringLiteral("%1").arg(p.nascita.year() % 100, 2, 10, QLatin1Char('0'));
    cf += QLatin1Char("ABCDEHLMPRST"[p.nascita.month() - 1]);
    const int giorno = p.nascita.day() + (p.donna ? 40 : 0);
    cf += QStringLiteral("%1").arg(giorno, 2, 10, QLatin1Char('0'));
    cf += QLatin1String(p.natoA->belfiore);
    return cf + CarattereControllo(cf);
}

QString PartitaIva(Caso &caso)
{
    // Seven digits of the firm, three of the tax office, the check digit.
    QString dieci = Cifre(caso, 7);
    dieci += QStringLiteral("%1").arg(caso.intero(1, 100), 3, 10, QLatin1Char('0'));
    return dieci + QString::number(CifraLuhn(dieci));
}

QString Iban(Caso &caso)
{
    // Control letter, bank, branch, account.
    QString bban(QLatin1Char(char('A' + caso.intero(0, 25))));
    bban += Cifre(caso, 22);
    // Check digits: the BBAN, then "IT00", as digits, modulo 97.
    const QString numero = LettereInCifre(bban + QStringLiteral("IT00"));
    int resto = 0;
    for (QChar c : numero)
        resto = (resto * 10 + c.digitValue()) % 97;
    return QStringLiteral("IT%1").arg(98 - resto, 2, 10, QLatin1Char('0')) + bban;
}

QString Isin(Caso &caso, const char *paese)
{
    const QString undici = QLatin1String(paese) + QStringLiteral("000") + Cifre(caso, 6);
    return undici + QString::number(CifraLuhn(LettereInCifre(undici)));
}

} // namespace sorvane::demo
