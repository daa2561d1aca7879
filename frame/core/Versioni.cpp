#include "frame/core/Versioni.h"

#include <QRegularExpression>

#ifndef SORVANE_VERSIONE_MAGGIORE
#define SORVANE_VERSIONE_MAGGIORE 0
#define SORVANE_VERSIONE_MINORE 0
#define SORVANE_VERSIONE_REVISIONE 0
#endif

namespace sorvane {

namespace {

const QString FineParagrafo = QStringLiteral("</p>");

// The page is written by hand as HTML: its news may carry tags and the
// usual entities for accented letters.
QString TestoSemplice(QString testo)
{
    static const QRegularExpression etichetta(QStringLiteral("<[^>]*>"));
    testo.remove(etichetta);
    static const QList<std::pair<QString, QString>> entita = {
        {QStringLiteral("&agrave;"), QStringLiteral("à")},
        {QStringLiteral("&egrave;"), QStringLiteral("è")},
        {QStringLiteral("&eacute;"), QStringLiteral("é")},
        {QStringLiteral("&igrave;"), QStringLiteral("ì")},
        {QStringLiteral("&ograve;"), QStringLiteral("ò")},
        {QStringLiteral("&ugrave;"), QStringLiteral("ù")},
        {QStringLiteral("&nbsp;"), QStringLiteral(" ")},
        {QStringLiteral("&quot;"), QStringLiteral("\"")},
        {QStringLiteral("&#39;"), QStringLiteral("'")},
        {QStringLiteral("&apos;"), QStringLiteral("'")},
        {QStringLiteral("&lt;"), QStringLiteral("<")},
        {QStringLiteral("&gt;"), QStringLiteral(">")},
        {QStringLiteral("&amp;"), QStringLiteral("&")},
    };
    for (const auto &[codice, lettera] : entita)
        testo.replace(codice, lettera, Qt::CaseInsensitive);
    return testo.simplified();
}

// Where the program's block begins, just past its name and ":"; -1 when
// the page does not name it. "XSORVANE:" is another program.
qsizetype InizioBlocco(const QString &pagina, const QString &nome)
{
    const QRegularExpression titolo(
        QStringLiteral("(?<![A-Za-z0-9_])") + QRegularExpression::escape(nome.trimmed())
            + QLatin1Char(':'),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = titolo.match(pagina);
    return m.hasMatch() ? m.capturedEnd() : -1;
}

} // namespace

int NumeroVersione(int maggiore, int minore, int revisione)
{
    return maggiore * 10000 + minore * 100 + revisione;
}

int NumeroVersione(const QString &testo)
{
    const QStringList parti = testo.split(QLatin1Char('.'));
    int numeri[3] = {0, 0, 0};
    for (int i = 0; i < 3 && i < parti.size(); ++i)
        numeri[i] = parti[i].trimmed().toInt(); // not a number: 0
    return NumeroVersione(numeri[0], numeri[1], numeri[2]);
}

QString TestoVersione(int numero)
{
    return QStringLiteral("%1.%2.%3")
        .arg(numero / 10000)
        .arg(numero / 100 % 100)
        .arg(numero % 100);
}

QString VersioneProgramma()
{
    return TestoVersione(NumeroVersioneProgramma());
}

int NumeroVersioneProgramma()
{
    return NumeroVersione(SORVANE_VERSIONE_MAGGIORE, SORVANE_VERSIONE_MINORE,
                          SORVANE_VERSIONE_REVISIONE);
}

QList<VoceVersione> VociProgramma(const QString &pagina, const QString &nome)
{
    QList<VoceVersione> voci;
    qsizetype p = InizioBlocco(pagina, nome);
    if (p < 0)
        return voci;
    while (p < pagina.size()) {
        const qsizetype uguale = pagina.indexOf(QLatin1Char('='), p);
        if (uguale < 0)
            break;
        // Between two entries stand only blanks and tags; a ":" there is the
        // next program's name.
        if (TestoSemplice(pagina.mid(p, uguale - p)).contains(QLatin1Char(':')))
            break;
        const qsizetype cancelletto = pagina.indexOf(QLatin1Char('#'), uguale + 1);
        if (cancelletto < 0)
            break;
        VoceVersione voce;
        voce.numero = NumeroVersione(pagina.mid(uguale + 1, cancelletto - uguale - 1));
        // A paragraph left open ends with its line.
        qsizetype fine = pagina.indexOf(FineParagrafo, cancelletto + 1, Qt::CaseInsensitive);
        qsizetype dopo = fine + FineParagrafo.size();
        if (fine < 0) {
            fine = pagina.indexOf(QLatin1Char('\n'), cancelletto + 1);
            if (fine < 0)
                fine = pagina.size();
            dopo = fine;
        }
        voce.testo = TestoSemplice(pagina.mid(cancelletto + 1, fine - cancelletto - 1));
        voci.append(voce);
        p = dopo;
    }
    return voci;
}

int VersionePubblicata(const QString &pagina, const QString &nome, int inUso)
{
    const QList<VoceVersione> voci = VociProgramma(pagina, nome);
    return voci.isEmpty() ? inUso : voci.first().numero;
}

QStringList NovitaDopo(const QString &pagina, const QString &nome, int inUso)
{
    QStringList novita;
    for (const VoceVersione &voce : VociProgramma(pagina, nome)) {
        if (voce.numero > inUso)
            novita.append(voce.testo);
    }
    return novita;
}

} // namespace sorvane
