#include "reports/Modello.h"

#include "frame/core/Formato.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>

#include <mustache.hpp>

#include <unordered_set>

namespace sorvane {

namespace mu = kainjow::mustache;

namespace {

using Nomi = std::unordered_set<std::string>;

// The variants a template may ask of a field by a suffix of its name.
struct Variante
{
    const char *suffisso;
    const char *formato; // nullptr: handled apart
};

constexpr Variante kVarianti[] = {
    {"", nullptr},
    {"_0", "#,###,###,##0"},
    {"_2", "#,###,###,##0.00"},
    {"_3", "#,###,###,##0.000"},
    {"_6", "#,##0.000000"},
    {"_data", "dd/mm/yyyy"},
    {"_grezzo", nullptr},
    {"_presente", nullptr},
};
constexpr int kNumVarianti = int(std::size(kVarianti));

bool Numerico(const QVariant &v)
{
    switch (v.typeId()) {
    case QMetaType::Double: case QMetaType::Float:
    case QMetaType::Int: case QMetaType::UInt:
    case QMetaType::LongLong: case QMetaType::ULongLong:
    case QMetaType::Short: case QMetaType::UShort:
        return !v.isNull();
    default:
        return false;
    }
}

bool Intero(const QVariant &v)
{
    return v.typeId() != QMetaType::Double && v.typeId() != QMetaType::Float;
}

// A field as the template prints it by default: amounts with two decimals,
// whole numbers without, dates as day/month/year, text as it is.
QString TestoNormale(const QVariant &v)
{
    if (v.isNull() || !v.isValid())
        return QString();
    if (Numerico(v))
        return Format(v.toDouble(), Intero(v) ? QStringLiteral("#,###,###,##0")
                                              : QStringLiteral("#,###,###,##0.00"));
    if (v.typeId() == QMetaType::QDate)
        return v.toDate().toString(QStringLiteral("dd/MM/yyyy"));
    if (v.typeId() == QMetaType::QDateTime)
        return v.toDateTime().date().toString(QStringLiteral("dd/MM/yyyy"));
    return v.toString();
}

bool Presente(const QVariant &v)
{
    if (v.isNull() || !v.isValid())
        return false;
    if (Numerico(v))
        return v.toDouble() != 0;
    if (v.typeId() == QMetaType::QDate)
        return v.toDate().isValid();
    return !v.toString().trimmed().isEmpty();
}

mu::data Variazione(const QVariant &v, int i)
{
    const Variante &var = kVarianti[i];
    if (i == 0)
        return mu::data(TestoNormale(v).toStdString());
    if (var.formato)
        return mu::data(Format(v, QString::fromLatin1(var.formato)).toStdString());
    if (qstrcmp(var.suffisso, "_presente") == 0)
        return mu::data(Presente(v));
    return mu::data(v.toString().toStdString());
}

// Which variants of each field the template names, worked out once per field
// name: a module of thousands of rows asks the same few fields every row.
class Richieste
{
public:
    explicit Richieste(Nomi nomi) : m_nomi(std::move(nomi))
    {
        // "CCampo8=1": the field compared with a value, for a block that
        // only some values print.
        for (const std::string &n : m_nomi) {
            const auto uguale = n.find('=');
            if (uguale != std::string::npos)
                m_confronti[QString::fromStdString(n.substr(0, uguale))].append(
                    QString::fromStdString(n.substr(uguale + 1)));
        }
    }

    bool chiede(const std::string &nome) const { return m_nomi.count(nome) > 0; }

    const QList<int> &varianti(const QString &campo)
    {
        auto it = m_cache.constFind(campo);
        if (it != m_cache.cend())
            return *it;
        QList<int> v;
        const std::string base = campo.toStdString();
        for (int i = 0; i < kNumVarianti; ++i) {
            if (chiede(base + kVarianti[i].suffisso))
                v.append(i);
        }
        return *m_cache.insert(campo, v);
    }

    void aggiungi(mu::data &oggetto, const QString &campo, const QVariant &valore)
    {
        const QList<int> &vv = varianti(campo);
        const auto confronti = m_confronti.constFind(campo);
        if (vv.isEmpty() && confronti == m_confronti.cend())
            return;
        const std::string base = campo.toStdString();
        for (int i : vv)
            oggetto.set(base + kVarianti[i].suffisso, Variazione(valore, i));
        if (confronti == m_confronti.cend())
            return;
        const QString testo = TestoNormale(valore);
        for (const QString &atteso : *confronti)
            oggetto.set(base + '=' + atteso.toStdString(), mu::data(testo == atteso));
    }

    void aggiungi(mu::data &oggetto, const QVariantMap &campi)
    {
        for (auto it = campi.cbegin(); it != campi.cend(); ++it)
            aggiungi(oggetto, it.key(), it.value());
    }

private:
    Nomi m_nomi;
    QHash<QString, QList<int>> m_cache;
    QHash<QString, QStringList> m_confronti; // field -> the values it is compared with
};

// Every name a template uses, split at the dots: "totali.CNumero1_0" gives
// "totali" and "CNumero1_0".
Nomi NomiUsati(const QStringList &testi)
{
    static const QRegularExpression re(
        QStringLiteral(R"(\{\{\s*[#^/&{]?\s*([A-Za-z_][\w.]*(?:=\w*)?))"));
    Nomi nomi;
    for (const QString &t : testi) {
        auto it = re.globalMatch(t);
        while (it.hasNext()) {
            const auto parti = it.next().captured(1).split(QLatin1Char('.'));
            for (const QString &p : parti)
                nomi.insert(p.toStdString());
        }
    }
    return nomi;
}

mu::data Totali(Richieste &rq, const QList<QVariantMap> &righe, int da, int a)
{
    QHash<QString, double> somme;
    for (int r = da; r < a; ++r) {
        const QVariantMap &riga = righe.at(r);
        for (auto it = riga.cbegin(); it != riga.cend(); ++it) {
            if (Numerico(it.value()))
                somme[it.key()] += it.value().toDouble();
        }
    }
    mu::data obj;
    for (auto it = somme.cbegin(); it != somme.cend(); ++it)
        rq.aggiungi(obj, it.key(), QVariant(it.value()));
    return obj;
}

mu::data Righe(Richieste &rq, const QList<QVariantMap> &righe, int da, int a)
{
    mu::data lista(mu::data::type::list);
    for (int r = da; r < a; ++r) {
        mu::data obj;
        rq.aggiungi(obj, righe.at(r));
        obj.set("riga", mu::data(std::to_string(r - da + 1)));
        obj.set("pari", mu::data((r - da) % 2 == 1));
        lista.push_back(obj);
    }
    return lista;
}

// Runs of rows with the same value of the group field, in staging order;
// the rows after `limite` are counted and summed but not listed.
mu::data Gruppi(Richieste &rq, const QList<QVariantMap> &righe, const QString &campo,
                int limite)
{
    mu::data lista(mu::data::type::list);
    int inizio = 0;
    int numero = 0;
    while (inizio < limite) {
        const QString chiave = TestoNormale(righe.at(inizio).value(campo));
        int fine = inizio + 1;
        while (fine < righe.size() && TestoNormale(righe.at(fine).value(campo)) == chiave)
            ++fine;
        mu::data g;
        rq.aggiungi(g, QStringLiteral("chiave"), chiave);
        g.set("numero", mu::data(std::to_string(++numero)));
        g.set("conteggio", mu::data(std::to_string(fine - inizio)));
        g.set("righe", Righe(rq, righe, inizio, qMin(fine, limite)));
        g.set("totali", Totali(rq, righe, inizio, fine));
        lista.push_back(g);
        inizio = fine;
    }
    return lista;
}

// Whether a list of the rows can print: false when every tag naming it
// stands inside a block that a yes/no field of the run (a "_presente" of the
// head or foot row) shuts. One module serves two prints (the slip lists
// `corpo`, the 04 statement `gruppi`), and the rows the other one would
// list cost as much to prepare as those printed.
bool Stampabile(const QStringList &testi, const QString &nome, const mu::data &radice)
{
    static const QRegularExpression tag(QStringLiteral(R"(\{\{\s*([#^/]?)\s*([^}\s]+)\s*\}\})"));
    struct Blocco
    {
        QString nome;
        bool chiuso;    // shut by a yes/no field of the run
        bool certo;     // this and every block around it read from the run
    };
    for (const QString &testo : testi) {
        QList<Blocco> aperti;
        auto it = tag.globalMatch(testo);
        while (it.hasNext()) {
            const auto m = it.next();
            const QString tipo = m.captured(1);
            const QString n = m.captured(2);
            if (tipo == u"/") {
                if (aperti.isEmpty() || aperti.last().nome != n)
                    return true;
                aperti.removeLast();
                continue;
            }
            bool chiuso = false;
            for (const Blocco &b : aperti)
                chiuso = chiuso || (b.certo && b.chiuso);
            if (n == nome && !chiuso)
                return true;
            if (tipo.isEmpty())
                continue;
            // A name the run lacks is false, unless the renderer adds it
            // later or it reaches into a part ("totali.CNumero1").
            static const QStringList dopo = {QStringLiteral("corpo"), QStringLiteral("gruppi"),
                                             QStringLiteral("totali"), QStringLiteral("pagina"),
                                             QStringLiteral("pagine")};
            const mu::data *v = radice.get(n.toStdString());
            const bool certo = (aperti.isEmpty() || aperti.last().certo)
                               && (v ? v->is_bool() : !n.contains(u'.') && !dopo.contains(n));
            const bool vero = v && v->is_true();
            aperti.append({n, certo && (tipo == u"#" ? !vero : vero), certo});
        }
    }
    return false;
}

QString Riempi(const QString &testo, const mu::data &dati, QString &errore)
{
    if (testo.isEmpty())
        return testo;
    mu::mustache t(testo.toStdString());
    if (!t.is_valid()) {
        errore = QStringLiteral("MODELLO DI STAMPA NON VALIDO: ")
                 + QString::fromStdString(t.error_message());
        return QString();
    }
    return QString::fromStdString(t.render(dati));
}

QString Estrai(QString &testo, const QString &tag)
{
    const QRegularExpression re(
        QStringLiteral("<%1\\b[^>]*>(.*?)</%1\\s*>").arg(tag),
        QRegularExpression::CaseInsensitiveOption
            | QRegularExpression::DotMatchesEverythingOption);
    QString trovato;
    auto m = re.match(testo);
    while (m.hasMatch()) {
        trovato += m.captured(1);
        testo.remove(m.capturedStart(), m.capturedLength());
        m = re.match(testo, m.capturedStart());
    }
    return trovato;
}

QString Meta(const QString &testo, const QString &nome)
{
    const QRegularExpression re(
        QStringLiteral(R"re(<meta\s+name\s*=\s*"%1"\s+content\s*=\s*"([^"]*)")re").arg(nome),
        QRegularExpression::CaseInsensitiveOption);
    return re.match(testo).captured(1).trimmed();
}

QString Unisci(const QString &cartella, const QString &nome)
{
    QString c = cartella;
    if (!c.isEmpty() && !c.endsWith(QLatin1Char('/')) && !c.endsWith(QDir::separator()))
        c += QDir::separator();
    return c + nome;
}

} // namespace

QString PercorsoModulo(const QString &nomeFile, const QString &cartellaLocale,
                       const QString &cartella)
{
    for (const QString &c : {cartellaLocale, cartella}) {
        if (c.trimmed().isEmpty())
            continue;
        const QString p = Unisci(c, nomeFile);
        if (QFileInfo(p).isFile())
            return p;
    }
    return QString();
}

QString CercaModulo(const QString &nomeFile)
{
    const Impostazioni &imp = impostazioni();
    const QString p = PercorsoModulo(nomeFile, imp.PathReportOperatore, imp.PathReport);
    if (p.isEmpty()) {
        // The shared folder is the one the set-up tool fills: name that one.
        const QString atteso = Unisci(imp.PathReport, nomeFile);
        Messaggio(QStringLiteral("GESTORE REPORT ") + atteso + QStringLiteral(" INESISTENTE"),
                  QString(), Icona::Stop);
    }
    return p;
}

QString FilePdfProposto(const Modello &modello)
{
    const QString cartella = impostazioni().PathStampe.trimmed();
    const QString nome = modello.nome.isEmpty() ? QStringLiteral("stampa") : modello.nome;
    return Unisci(cartella.isEmpty() ? QDir::homePath() : cartella, nome + QStringLiteral(".pdf"));
}

Modello LeggiModello(const QString &testo, const QString &cartella)
{
    Modello m;
    QString t = testo;
    m.gruppo = Meta(t, QStringLiteral("gruppo"));
    m.orizzontale = Meta(t, QStringLiteral("pagina")).compare(
                        QStringLiteral("orizzontale"), Qt::CaseInsensitive) == 0;
    m.stile = Estrai(t, QStringLiteral("style"));
    m.intestazione = Estrai(t, QStringLiteral("header")).trimmed();
    // Every page says which it is: a template without a footer of its own
    // gets the page numbers; an empty <footer></footer> asks for none.
    static const QRegularExpression haPiede(QStringLiteral("<footer\\b"),
                                            QRegularExpression::CaseInsensitiveOption);
    if (t.contains(haPiede))
        m.piede = Estrai(t, QStringLiteral("footer")).trimmed();
    else
        m.piede = QStringLiteral("<p align=\"right\" style=\"font-size: 7.5pt\">"
                                 "Pagina {{pagina}} di {{pagine}}</p>");
    m.corpo = t;
    m.cartella = cartella;
    return m;
}

bool CaricaModello(const QString &percorso, Modello &modello)
{
    QFile f(percorso);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    modello = LeggiModello(QString::fromUtf8(f.readAll()), QFileInfo(percorso).absolutePath());
    modello.nome = QFileInfo(percorso).completeBaseName();
    return true;
}

ModelloCompilato CompilaModello(const Modello &modello, const DatiReport &dati, int primeRighe)
{
    const int tutte = int(dati.corpo.size());
    const int elencate = primeRighe < 0 ? tutte : qMin(primeRighe, tutte);
    const QStringList testi = {modello.corpo, modello.intestazione, modello.piede};
    Richieste rq(NomiUsati(testi));

    QVariantMap esecuzione = dati.esecuzione;
    if (!esecuzione.contains(QStringLiteral("oggi"))) {
        const QString oggi = sessione().OggiTesto;
        esecuzione.insert(QStringLiteral("oggi"),
                          oggi.isEmpty() ? QDate::currentDate().toString(u"dd/MM/yyyy") : oggi);
    }
    if (!esecuzione.contains(QStringLiteral("operatore")))
        esecuzione.insert(QStringLiteral("operatore"), sessione().CodiceOperatore);

    mu::data radice;
    rq.aggiungi(radice, dati.testa);
    rq.aggiungi(radice, dati.piede);
    rq.aggiungi(radice, esecuzione);
    radice.set("conteggio", mu::data(std::to_string(dati.corpo.size())));
    if (rq.chiede("corpo") && Stampabile(testi, QStringLiteral("corpo"), radice))
        radice.set("corpo", Righe(rq, dati.corpo, 0, elencate));
    if (rq.chiede("totali"))
        radice.set("totali", Totali(rq, dati.corpo, 0, int(dati.corpo.size())));
    if (rq.chiede("gruppi") && !modello.gruppo.isEmpty()
        && Stampabile(testi, QStringLiteral("gruppi"), radice))
        radice.set("gruppi", Gruppi(rq, dati.corpo, modello.gruppo, elencate));
    radice.set("pagina", mu::data(SegnoPagina().toStdString()));
    radice.set("pagine", mu::data(SegnoPagine().toStdString()));

    ModelloCompilato c;
    // The page marks mean something only in header and footer.
    c.corpo = Riempi(modello.corpo, radice, c.errore)
                  .remove(SegnoPagina()).remove(SegnoPagine());
    c.intestazione = Riempi(modello.intestazione, radice, c.errore);
    c.piede = Riempi(modello.piede, radice, c.errore);
    return c;
}

} // namespace sorvane
