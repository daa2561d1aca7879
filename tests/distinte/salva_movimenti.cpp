// A workstation saving slips without its screen, for the tests of several
// workstations on one server:
//
//   salva_movimenti <database> <operatore> <postazione> <movimenti>
//
// Each movement is written alone into the working table and saved at once
// by the entry screen's own save, one save per movement, with a line
// "salvato <n>" after each. The movement carries its workstation in the
// firm and its ordinal in the amount, so that the test can tell whose it
// is. The server comes from SORVANE_PROVA_SERVER ("host:port").

#include "distinte/Salvataggio.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Sessione.h"
#include "store/Connessione.h"
#include "store/Transazione.h"

#include <QCoreApplication>
#include <QSqlError>
#include <QSqlQuery>

#include <cstdio>

using namespace sorvane;

namespace {

bool MettiInLavoro(const QString &postazione, int n, QString *errore)
{
    Transazione t;
    QSqlQuery q(DbLavoro());
    q.prepare(QStringLiteral("INSERT INTO BkDistinte (dstCodice, dstPrg, dstDitta, dstData, "
                             "dstCliente, dstCausale, dstMoneta, dstImporto, dstAssegno, "
                             "dstBanca, dstSpeseUT, dstCodP0, dstCodP1, dstCodP2, dstCodP3, "
                             "dstCodP4, dstChiusa) VALUES (1, '0', ?, 45458, 12, '001', "
                             "'EUR', ?, ' ', ' ', 0, 'PRODOTTO', ' ', ' ', ' ', ' ', ' ')"));
    q.addBindValue(postazione);
    q.addBindValue(double(n));
    if (!t.attiva() || !q.exec() || !t.conferma()) {
        *errore = q.lastError().text() + QLatin1Char(' ') + t.errore();
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arg = app.arguments();
    if (arg.size() != 5) {
        std::fprintf(stderr, "uso: salva_movimenti database operatore postazione movimenti\n");
        return 2;
    }
    ServerArchivio server;
    if (!LeggiIndirizzo(qEnvironmentVariable("SORVANE_PROVA_SERVER"), server)) {
        std::fprintf(stderr, "SORVANE_PROVA_SERVER vuole HOST:PORTA\n");
        return 2;
    }
    server.utente = qEnvironmentVariable("PGUSER", QStringLiteral("sorvane"));
    server.database = arg.at(1);
    server.postazione = arg.at(3);
    Impostazioni &imp = impostazioni();
    imp.Motore = QStringLiteral("POSTGRES");
    imp.Server = server;
    sessione().CodiceOperatore = arg.at(2);
    if (!ConnettiDatabase()) {
        std::fprintf(stderr, "connessione: %s\n", qPrintable(sessione().TestoErrore));
        return 1;
    }
    const int movimenti = arg.at(4).toInt();
    for (int n = 1; n <= movimenti; ++n) {
        QString errore;
        if (!MettiInLavoro(imp.Server.postazione, n, &errore)) {
            std::fprintf(stderr, "movimento %d: %s\n", n, qPrintable(errore));
            return 1;
        }
        const EsitoSalvataggio esito = SalvaDistinta();
        if (!esito.riuscito) {
            std::fprintf(stderr, "salvataggio %d: %s\n", n, qPrintable(esito.errore));
            return 1;
        }
        std::printf("salvato %d\n", n);
        std::fflush(stdout);
    }
    ChiudiDatabase();
    return 0;
}
