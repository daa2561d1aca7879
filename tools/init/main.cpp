// sorvane-init: prepares a data folder for the program.

#include "tools/init/Installazione.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

namespace {

const char *const Aiuto =
    "Uso: sorvane-init [opzioni] CARTELLA\n"
    "\n"
    "Prepara CARTELLA per il programma: le cartelle dei dati, di lavoro e dei\n"
    "moduli di stampa, i quattro database con tutte le tabelle e le righe che\n"
    "servono a un ufficio nuovo, e il file sorvane.ini che punta a tutto questo.\n"
    "Un database o un sorvane.ini gia' presenti non vengono mai sovrascritti.\n"
    "\n"
    "Opzioni:\n"
    "  --operatore CODICE  codice dell'operatore (predefinito: UFFICIO)\n"
    "  --demo              aggiunge un ufficio di prova realistico\n"
    "  --scale N           con i dati di prova, N movimenti (per le misure)\n"
    "  --seme N            seme dei dati di prova (predefinito: 1)\n"
    "  --moduli CARTELLA   cartella dei modelli di stampa da installare\n"
    "  -h, --aiuto         mostra questo aiuto\n"
    "\n"
    "Ufficio su un server PostgreSQL (la password nel file .pgpass o nel\n"
    "pg_service.conf, mai nel sorvane.ini):\n"
    "  --server HOST[:PORTA]  il server; CARTELLA riceve sorvane.ini e le\n"
    "                         cartelle locali, i dati vanno sul server\n"
    "  --database NOME        il database dell'ufficio (creato se manca)\n"
    "  --utente UTENTE        l'utente del server\n"
    "  --servizio NOME        un servizio di pg_service.conf invece dei tre sopra\n"
    "  --postazione NOME      la postazione (predefinito: il nome del computer)\n"
    "  --copia ORIGINE        copia sul server l'ufficio su file della cartella\n"
    "                         ORIGINE, poi confronta le righe tabella per tabella"
    "\n"
    "Esito: 0 fatto, 1 rifiutato o fallito, 2 opzioni errate.\n";

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("sorvane-init"));
    QTextStream out(stdout);
    QTextStream err(stderr);

    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption aiuto({QStringLiteral("h"), QStringLiteral("aiuto"),
                                    QStringLiteral("help")},
                                   QStringLiteral("Mostra questo aiuto."));
    const QCommandLineOption operatore(QStringLiteral("operatore"),
                                       QStringLiteral("Codice dell'operatore."),
                                       QStringLiteral("CODICE"), QStringLiteral("UFFICIO"));
    const QCommandLineOption demo(QStringLiteral("demo"),
                                  QStringLiteral("Aggiunge un ufficio di prova."));
    const QCommandLineOption scala({QStringLiteral("scale"), QStringLiteral("scala")},
                                   QStringLiteral("Movimenti dei dati di prova."),
                                   QStringLiteral("N"));
    const QCommandLineOption seme(QStringLiteral("seme"), QStringLiteral("Seme."),
                                  QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption moduli(QStringLiteral("moduli"),
                                    QStringLiteral("Modelli di stampa da installare."),
                                    QStringLiteral("CARTELLA"));
    const auto valore = [](const char *nome, const char *segnaposto) {
        return QCommandLineOption(QString::fromLatin1(nome), QString(),
                                  QString::fromLatin1(segnaposto));
    };
    const QCommandLineOption server = valore("server", "HOST");
    const QCommandLineOption database = valore("database", "NOME");
    const QCommandLineOption utente = valore("utente", "UTENTE");
    const QCommandLineOption servizio = valore("servizio", "NOME");
    const QCommandLineOption postazione = valore("postazione", "NOME");
    const QCommandLineOption copia = valore("copia", "ORIGINE");
    parser.addOptions({aiuto, operatore, demo, scala, seme, moduli, server, database, utente,
                       servizio, postazione, copia});
    parser.addPositionalArgument(QStringLiteral("CARTELLA"), QStringLiteral("Cartella dati."));

    const auto sbagliato = [&](const QString &testo) {
        err << "sorvane-init: " << testo << "\n\n" << Aiuto;
        return 2;
    };
    if (!parser.parse(app.arguments())) {
        const QStringList ignote = parser.unknownOptionNames();
        return sbagliato(ignote.isEmpty()
                             ? QStringLiteral("opzioni errate: ") + parser.errorText()
                             : QStringLiteral("opzione sconosciuta: ") + ignote.join(' '));
    }
    if (parser.isSet(aiuto)) {
        out << Aiuto;
        return 0;
    }
    if (parser.positionalArguments().size() != 1)
        return sbagliato(QStringLiteral("indicare una e una sola CARTELLA"));

    sorvane::init::Opzioni opzioni;
    opzioni.cartella = parser.positionalArguments().first();
    opzioni.operatore = parser.value(operatore);
    opzioni.demo = parser.isSet(demo) || parser.isSet(scala);
    bool ok = true;
    if (parser.isSet(scala)) {
        opzioni.movimenti = parser.value(scala).toLongLong(&ok);
        if (!ok || opzioni.movimenti < 1)
            return sbagliato(QStringLiteral("--scale vuole un numero di movimenti maggiore di 0"));
    }
    opzioni.seme = parser.value(seme).toUInt(&ok);
    if (!ok)
        return sbagliato(QStringLiteral("--seme vuole un numero intero non negativo"));
    opzioni.modelli = parser.isSet(moduli) ? parser.value(moduli)
                                           : QStringLiteral(SORVANE_MODELLI_PREDEFINITI);

    sorvane::init::Server dove;
    const bool suServer = parser.isSet(server) || parser.isSet(servizio) || parser.isSet(copia);
    if (suServer) {
        if (!sorvane::LeggiIndirizzo(parser.value(server), dove))
            return sbagliato(QStringLiteral("--server vuole HOST oppure HOST:PORTA"));
        dove.database = parser.value(database);
        dove.utente = parser.value(utente);
        dove.servizio = parser.value(servizio);
        dove.postazione = parser.value(postazione);
        dove.copia = parser.value(copia);
        if (dove.database.isEmpty() && dove.servizio.isEmpty())
            return sbagliato(QStringLiteral("un ufficio sul server vuole --database o --servizio"));
        if (!dove.copia.isEmpty() && opzioni.demo)
            return sbagliato(QStringLiteral("--copia e --demo non vanno insieme"));
        if (opzioni.movimenti > 0)
            return sbagliato(QStringLiteral("--scale vale solo per un ufficio su file"));
    }

    QString errore;
    const auto riga = [&](const QString &r) { out << r << Qt::endl; };
    const bool fatto = suServer ? sorvane::init::InstallaSuServer(opzioni, dove, riga, &errore)
                                : sorvane::init::Installa(opzioni, riga, &errore);
    if (!fatto) {
        err << "sorvane-init: " << errore << Qt::endl;
        err << "sorvane-init: nessun file esistente e' stato modificato." << Qt::endl;
        return 1;
    }
    return 0;
}
