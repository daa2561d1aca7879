#include "reports/PezziTabella.h"

namespace sorvane {

namespace {

struct Tag
{
    QString nome;       // lower case, without "/"
    bool chiusura = false;
    int inizio = 0;
    int fine = 0;       // just after ">"
};

bool Lettera(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

// The next tag from `da`, comments skipped; false at the end or on markup
// left open.
bool ProssimoTag(const QString &html, int da, Tag &tag, bool &rotto)
{
    const int n = int(html.size());
    for (int i = html.indexOf(u'<', da); i >= 0 && i < n; i = html.indexOf(u'<', i + 1)) {
        if (QStringView(html).mid(i, 4) == u"<!--") {
            const int fine = html.indexOf(QStringLiteral("-->"), i + 4);
            if (fine < 0) {
                rotto = true;
                return false;
            }
            i = fine + 2;
            continue;
        }
        int j = i + 1;
        const bool chiusura = j < n && html.at(j) == u'/';
        if (chiusura)
            ++j;
        const int inizioNome = j;
        while (j < n && Lettera(html.at(j)))
            ++j;
        if (j == inizioNome)
            continue; // a "<" of the text
        // The end of the tag, not a ">" inside a quoted attribute.
        QChar virgolette;
        int k = j;
        for (; k < n; ++k) {
            const QChar c = html.at(k);
            if (!virgolette.isNull()) {
                if (c == virgolette)
                    virgolette = QChar();
            } else if (c == u'"' || c == u'\'') {
                virgolette = c;
            } else if (c == u'>') {
                break;
            }
        }
        if (k >= n) {
            rotto = true;
            return false;
        }
        tag.nome = html.mid(inizioNome, j - inizioNome).toLower();
        tag.chiusura = chiusura;
        tag.inizio = i;
        tag.fine = k + 1;
        return true;
    }
    return false;
}

} // namespace

std::optional<TabellaLunga> TrovaTabellaLunga(const QString &html, int minimo)
{
    std::optional<TabellaLunga> migliore;
    TabellaLunga corrente;
    int inizioCorpo = 0;
    int livello = 0;        // tables open
    int tabelle = 0;        // top-level tables met
    bool testata = false;   // inside the <thead> of a top-level table
    int fineCorpoTabella = -1;
    bool rotto = false;
    Tag tag;
    for (int da = 0; ProssimoTag(html, da, tag, rotto); da = tag.fine) {
        if (tag.nome == u"body" && !tag.chiusura && livello == 0) {
            inizioCorpo = tag.fine;
        } else if (tag.nome == u"table") {
            if (!tag.chiusura) {
                if (livello++ == 0) {
                    corrente = TabellaLunga();
                    corrente.inizio = tag.inizio;
                    corrente.indice = tabelle++;
                    fineCorpoTabella = -1;
                }
            } else if (livello > 0 && --livello == 0) {
                corrente.righe.append(fineCorpoTabella >= 0 ? fineCorpoTabella : tag.inizio);
                corrente.inizioCorpo = inizioCorpo;
                if (corrente.conteggio() >= minimo
                    && (!migliore || corrente.conteggio() > migliore->conteggio()))
                    migliore = corrente;
            }
        } else if (livello == 1) {
            if (tag.nome == u"tfoot")
                return std::nullopt;
            if (tag.nome == u"thead")
                testata = !tag.chiusura;
            else if (tag.nome == u"tr" && !tag.chiusura && !testata) {
                corrente.righe.append(tag.inizio);
                fineCorpoTabella = -1;
            } else if (tag.nome == u"tbody" && tag.chiusura)
                fineCorpoTabella = tag.inizio;
        }
    }
    if (rotto || livello != 0 || (migliore && migliore->conteggio() < 1))
        return std::nullopt;
    return migliore;
}

QString PezzoTabella(const QString &html, const TabellaLunga &t, int da, int a)
{
    QString pezzo;
    if (da == 0) {
        pezzo = html.left(t.righe.first());
    } else {
        pezzo = html.left(t.inizioCorpo);
        pezzo += QStringView(html).mid(t.inizio, t.righe.first() - t.inizio);
    }
    pezzo += QStringView(html).mid(t.righe.at(da), t.righe.at(a) - t.righe.at(da));
    if (a == t.conteggio())
        pezzo += QStringView(html).mid(t.righe.last());
    else
        pezzo += QStringLiteral("</table>");
    return pezzo;
}

} // namespace sorvane
