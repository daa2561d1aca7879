#include "ProvaIni.h"

#include "frame/core/Giorni.h"
#include "frame/core/Versioni.h"
#include "frame/main/Aggiorna.h"
#include "frame/ui/Documenti.h"
#include "frame/ui/Modale.h"
#include "store/Connessione.h"

#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QNetworkProxy>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

using namespace sorvane;
using namespace sorvane::prova;

namespace {

// A web server on 127.0.0.1 that answers every GET with one fixed page, or,
// when it has none, accepts and never says a word.
class ServerProva : public QObject
{
public:
    ServerProva()
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, this, [this] { accetta(); });
    }

    QString sito() const
    {
        return QStringLiteral("http://127.0.0.1:%1").arg(m_server.serverPort());
    }
    void pagina(const QByteArray &testo) { m_pagina = testo; }
    const QStringList &richieste() const { return m_richieste; }

private:
    void accetta()
    {
        while (QTcpSocket *s = m_server.nextPendingConnection()) {
            s->setParent(this);
            QObject::connect(s, &QTcpSocket::readyRead, this, [this, s] {
                m_letto[s] += s->readAll();
                if (!m_letto[s].contains("\r\n\r\n") || m_pagina.isNull())
                    return;
                m_richieste.append(QString::fromLatin1(m_letto[s].left(m_letto[s].indexOf('\r'))));
                s->write("HTTP/1.0 200 OK\r\nContent-Type: text/html\r\nContent-Length: "
                         + QByteArray::number(m_pagina.size()) + "\r\n\r\n" + m_pagina);
                s->disconnectFromHost();
            });
        }
    }

    QTcpServer m_server;
    QByteArray m_pagina;
    QHash<QTcpSocket *, QByteArray> m_letto;
    QStringList m_richieste;
};

// What the screen showed when it came up.
struct Visto
{
    QString titolo;
    QStringList novita;
    QString inUso, pubblicata, errore, ricorda;
    bool pannello[3] = {};
};

class ProvaAggiorna : public ProvaIni
{
protected:
    void SetUp() override
    {
        ProvaIni::SetUp();
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        Aggiornato() = false;
        EsitoAggiorna() = 0;
        scriviIni(QStringLiteral("SITO"), m_server.sito());
        installaGestoreModale([this](QDialog &d) {
            auto &a = static_cast<Aggiorna &>(d);
            ++m_mostrato;
            m_visto.titolo = a.windowTitle();
            for (QLabel *l : a.lbAgg)
                m_visto.novita << l->text();
            m_visto.inUso = a.lbVersion[0]->text();
            m_visto.pubblicata = a.lbVersion[1]->text();
            m_visto.errore = a.lbMessErr->text();
            m_visto.ricorda = a.cmdRicorda->text();
            for (int i = 0; i < 3; ++i)
                m_visto.pannello[i] = !a.Picture1[i]->isHidden();
            if (m_azione)
                m_azione(a);
            return a.result();
        });
    }
    void TearDown() override
    {
        installaGestoreModale({});
        installaApriUrl({});
        QNetworkProxy::setApplicationProxy(QNetworkProxy::DefaultProxy);
    }

    void scriviIni(const QString &chiave, const QString &valore)
    {
        ScriviIni(m_ini, QStringLiteral("AGGIORNA"), chiave, valore);
    }
    QString ricordo() const
    {
        return LeggiIni(m_ini, QStringLiteral("AGGIORNA"), NomeProgrammaMaiuscolo());
    }
    static int oggi() { return GiornoDaData(QDate::currentDate()); }

    // This program's entries: two newer than the version in use, that
    // version itself, then another program's newer one.
    static QByteArray PaginaConNovita()
    {
        const int n = NumeroVersioneProgramma();
        return QStringLiteral("<html><body>\n%1:\n=%2#<p>Stampa nuova</p>\n"
                              "=%3#<p>Correzione &egrave; fatta</p>\n=%4#<p>In uso</p>\n"
                              "ALTRO:\n=%5#<p>Di un altro</p>\n</body></html>")
            .arg(NomeProgrammaMaiuscolo(), TestoVersione(n / 100 * 100 + 100),
                 TestoVersione(n + 1), TestoVersione(n), TestoVersione(n + 10000))
            .toUtf8();
    }

    ServerProva m_server;
    int m_mostrato = 0;
    Visto m_visto;
    std::function<void(Aggiorna &)> m_azione;
};

TEST(Versioni, SommaDecideEPaginaLettaPerProgramma)
{
    EXPECT_EQ(NumeroVersione(QStringLiteral("8.6.22")), 80622);
    EXPECT_GT(NumeroVersione(QStringLiteral("8.6.22")), NumeroVersione(QStringLiteral("8.5.99")));
    EXPECT_EQ(NumeroVersione(QStringLiteral(" 2.x")), 20000);

    const QString pagina = QStringLiteral("XSORVANE:\n=9.9.9#<p>altro</p>\n"
                                          "Sorvane: ultima =8.6.22#<p>Nuova <b>stampa</b></p>\n"
                                          "=8.6.1#<p>Due</p>\n=8.5.99#<p>In uso</p>\n"
                                          "ALTRO:\n=9.0.0#<p>Tre</p>");
    EXPECT_EQ(VersionePubblicata(pagina, QStringLiteral("SORVANE"), 80599), 80622);
    EXPECT_EQ(NovitaDopo(pagina, QStringLiteral("SORVANE"), 80599),
              QStringList({QStringLiteral("Nuova stampa"), QStringLiteral("Due")}));
    // A page that does not name the program leaves it up to date.
    EXPECT_EQ(VersionePubblicata(pagina, QStringLiteral("ASSENTE"), 80599), 80599);
    // A program named with no entries of its own takes none of the next one's.
    EXPECT_TRUE(VociProgramma(QStringLiteral("VUOTO:\nALTRO:\n=1.0.0#<p>x</p>"),
                              QStringLiteral("VUOTO"))
                    .isEmpty());
}

TEST_F(ProvaAggiorna, PaginaSenzaIlProgrammaEAggiornato)
{
    m_server.pagina("<html>ALTRO:\n=99.0.0#<p>Di un altro</p></html>");
    VerificaAggiornamenti(-1);
    ASSERT_EQ(m_mostrato, 1);
    EXPECT_EQ(m_server.richieste(),
              QStringList{QStringLiteral("GET /Aggiornamenti/Versioni.htm HTTP/1.1")});
    EXPECT_EQ(m_visto.titolo, QStringLiteral("PROGRAMMA AGGIORNATO"));
    EXPECT_EQ(m_visto.inUso, VersioneProgramma());
    EXPECT_EQ(m_visto.pubblicata, VersioneProgramma());
    EXPECT_TRUE(m_visto.pannello[1]);
    EXPECT_FALSE(m_visto.pannello[2]);
    EXPECT_EQ(EsitoAggiorna(), 0);
}

TEST_F(ProvaAggiorna, NuovaVersioneElencaSoloLeNovitaEPuoRicordare)
{
    m_server.pagina(PaginaConNovita());
    m_azione = [](Aggiorna &a) {
        a.cmbNum->setCurrentIndex(3);
        EXPECT_EQ(a.cmdRicorda->text(), QStringLiteral("&RICORDAMI FRA 3  GIORNI"));
        a.cmdRicorda->click();
    };
    VerificaAggiornamenti(-1);
    ASSERT_EQ(m_mostrato, 1);
    EXPECT_EQ(m_visto.titolo, QStringLiteral("DISPONIBILE NUOVO AGGIORNAMENTO"));
    EXPECT_EQ(m_visto.novita, QStringList({QStringLiteral("Stampa nuova"),
                                           QStringLiteral("Correzione è fatta")}));
    EXPECT_TRUE(m_visto.pannello[2]);
    EXPECT_EQ(m_visto.ricorda, QStringLiteral("&RICORDAMI AD OGNI AVVIO"));
    EXPECT_EQ(ricordo(), QString::number(oggi() + 3));

    // Index 0 stores today, so that the next start checks again; a forced
    // check from the menu runs again in the same run.
    m_azione = [](Aggiorna &a) { a.cmdRicorda->click(); };
    VerificaAggiornamenti(-1);
    EXPECT_EQ(ricordo(), QString::number(oggi()));

    // "&VEDI LE NOVITA'" opens the program's news page on the same site.
    QList<QUrl> aperti;
    installaApriUrl([&aperti](const QUrl &u) {
        aperti << u;
        return true;
    });
    m_azione = [](Aggiorna &a) { a.cmdAggiorna->click(); };
    VerificaAggiornamenti(-1);
    EXPECT_EQ(aperti, QList<QUrl>{QUrl(m_server.sito() + QStringLiteral("/private/")
                                       + NomeProgrammaMaiuscolo() + QStringLiteral(".htm"))});
    EXPECT_EQ(m_server.richieste().size(), 3);
}

TEST_F(ProvaAggiorna, ServerMutoDaErroreInConnessione)
{
    scriviIni(QStringLiteral("ATTESA"), QStringLiteral("200"));
    VerificaAggiornamenti(-1);
    ASSERT_EQ(m_mostrato, 1);
    EXPECT_EQ(m_visto.titolo, QStringLiteral("ERRORE IN CONNESSIONE"));
    EXPECT_TRUE(m_visto.errore.startsWith(QStringLiteral("Errore in connessione con ")
                                          + m_server.sito()));
    EXPECT_TRUE(m_visto.pannello[0]);
    EXPECT_FALSE(m_visto.pannello[1]);

    // Not forced, a failure shows nothing.
    Aggiornato() = false;
    VerificaAggiornamenti(0);
    EXPECT_EQ(m_mostrato, 1);
    EXPECT_NE(EsitoAggiorna(), 0);
}

TEST_F(ProvaAggiorna, IlRicordoDecideSeControllare)
{
    m_server.pagina(PaginaConNovita());
    // A reminder still to come: no connection, nothing shown.
    scriviIni(NomeProgrammaMaiuscolo(), QString::number(oggi() + 1));
    VerificaAggiornamenti(0);
    EXPECT_EQ(EsitoAggiorna(), -2);
    EXPECT_EQ(m_mostrato, 0);
    EXPECT_TRUE(m_server.richieste().isEmpty());

    // Once in a run: the next check that is not forced returns at once.
    scriviIni(NomeProgrammaMaiuscolo(), QString::number(oggi()));
    VerificaAggiornamenti(0);
    EXPECT_TRUE(m_server.richieste().isEmpty());

    // A reminder falling today checks.
    Aggiornato() = false;
    VerificaAggiornamenti(0);
    EXPECT_EQ(m_server.richieste().size(), 1);
    EXPECT_EQ(m_mostrato, 1);
}

} // namespace
