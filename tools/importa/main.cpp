// sorvane-importa: moves an office's legacy Access files into a data folder.

#include "tools/importa/Comando.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

namespace {

const char *const Aiuto =
    "Uso: sorvane-importa [opzioni] SORGENTE DESTINAZIONE\n"
    "\n"
    "Legge i file Access dell'ufficio (DatiDV.mdb, WorkDV.mdb, VisiteDV.mdb,\n"
    "IndiciDV.mdb) e ne copia le tabelle nella cartella dati DESTINAZIONE.\n"
    "SORGENTE e' la cartella dei file (quelli dell'operatore nella sua\n"
    "sottocartella, IndiciDV.mdb nella cartella stessa) oppure un solo file.\n"
    "DESTINAZIONE e' una cartella fatta da sorvane-init oppure una nuova, che\n"
    "viene preparata come farebbe sorvane-init. L'importazione e' tutta o\n"
    "niente: se una riga non entra, la cartella dati resta com'era.\n"
    "\n"
    "Opzioni:\n"
    "  --operatore CODICE  operatore (predefinito: quello della cartella dati,\n"
    "                      o della sottocartella di SORGENTE, o UFFICIO)\n"
    "  --sostituisci       svuota e riscrive le tabelle che hanno gia' righe\n"
    "  --moduli CARTELLA   modelli di stampa per una cartella dati nuova\n"
    "  -h, --aiuto         mostra questo aiuto\n"
    "\n"
    "Esito: 0 fatto, 1 rifiutato o fallito (nulla modificato), 2 opzioni errate.\n";

enum class Richiesta { Importa, Aiuto, Sbagliata };

// The command line into the options; *sbaglio says what is wrong with it.
Richiesta Leggi(const QStringList &argomenti, sorvane::importa::Opzioni *o, QString *sbaglio)
{
    using O = QCommandLineOption;
    QCommandLineParser p;
    p.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const O aiuto({"h", "aiuto", "help"}, "Aiuto.");
    const O operatore("operatore", "Operatore.", "CODICE");
    const O sostituisci("sostituisci", "Sostituisce.");
    const O moduli("moduli", "Modelli.", "CARTELLA");
    p.addOptions({aiuto, operatore, sostituisci, moduli});
    if (!p.parse(argomenti)) {
        *sbaglio = QStringLiteral("opzioni errate: ") + p.errorText();
        return Richiesta::Sbagliata;
    }
    if (p.isSet(aiuto))
        return Richiesta::Aiuto;
    const QStringList posizioni = p.positionalArguments();
    if (posizioni.size() != 2) {
        *sbaglio = QStringLiteral("indicare SORGENTE e DESTINAZIONE");
        return Richiesta::Sbagliata;
    }
    o->sorgente = posizioni[0];
    o->destinazione = posizioni[1];
    o->operatore = p.value(operatore);
    o->sostituisci = p.isSet(sostituisci);
    o->modelli = p.isSet(moduli) ? p.value(moduli) : QStringLiteral(SORVANE_MODELLI_PREDEFINITI);
    return Richiesta::Importa;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("sorvane-importa"));
    QTextStream out(stdout);
    QTextStream err(stderr);

    sorvane::importa::Opzioni opzioni;
    QString errore;
    switch (Leggi(app.arguments(), &opzioni, &errore)) {
    case Richiesta::Aiuto: out << Aiuto; return 0;
    case Richiesta::Sbagliata: err << "sorvane-importa: " << errore << "\n\n" << Aiuto; return 2;
    case Richiesta::Importa: break;
    }
    const bool fatto = sorvane::importa::Esegui(
        opzioni, [&](const QString &riga) { out << riga << Qt::endl; }, &errore);
    if (!fatto) {
        out.flush();
        err << "sorvane-importa: " << errore << Qt::endl;
        err << "sorvane-importa: " << opzioni.destinazione << " non e' stata modificata."
            << Qt::endl;
        return 1;
    }
    out << "Importazione completata in " << opzioni.destinazione << "." << Qt::endl;
    return 0;
}
