#include "ledger04/Saldi04.h"

#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Ini.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"

namespace sorvane {

namespace {

const QString Sezione = QStringLiteral("DIST04");
const QString ChiaveSx = QStringLiteral("CAUSALE1");
const QString ChiaveDx = QStringLiteral("CAUSALE2");
const QString DataDescrizione = QStringLiteral("31/12/");

std::int16_t &codiceStop() { return sessione().CodiceStop; }

// The halves keep their blanks, which the INI reader trims even inside the
// quotes it takes off: they travel inside a second pair of quotes, which
// only this screen takes off.
const QString Apre = QStringLiteral("'\"");
const QString Chiude = QStringLiteral("\"'");

QString Letta(const QString &chiave, const QString &predefinita)
{
    QString v = LeggiIni(impostazioni().IniLocale, Sezione, chiave);
    if (v.size() >= 2 && v.front() == QLatin1Char('"') && v.back() == QLatin1Char('"'))
        v = v.mid(1, v.size() - 2);
    return v.trimmed().isEmpty() ? predefinita : v;
}

bool Scritta(const QString &chiave, const QString &valore)
{
    return ScriviIni(impostazioni().IniLocale, Sezione, chiave, Apre + valore + Chiude);
}

} // namespace

DescrizioneSaldo LeggiDescrizioneSaldo()
{
    return {Letta(ChiaveSx, QStringLiteral("al 31/12/")),
            Letta(ChiaveDx, QStringLiteral(" Movimenti vari"))};
}

bool ScriviDescrizioneSaldo(const DescrizioneSaldo &d)
{
    const bool sx = Scritta(ChiaveSx, d.sx);
    return Scritta(ChiaveDx, d.dx) && sx;
}

std::optional<DescrizioneSaldo> ImparaDescrizione(const QString &testo)
{
    const QString s = testo.trimmed();
    const qsizetype data = s.indexOf(DataDescrizione);
    if (data < 0)
        return std::nullopt;
    // The left half ends with the date's last "/"; the year runs to the
    // first blank from there, or to the end.
    const qsizetype fine = data + DataDescrizione.size();
    const qsizetype blank = s.indexOf(QLatin1Char(' '), fine - 1);
    return DescrizioneSaldo{s.left(fine), blank < 0 ? QString() : s.mid(blank)};
}

QString DescrizioneAnno(const DescrizioneSaldo &d, int anno)
{
    return d.sx + QString::number(anno) + d.dx;
}

RigaDistinta04 RigaSaldo(const QString &ditta, std::int32_t giorno, std::int32_t cliente,
                         bool versamento, double importo, const QString &descrizione)
{
    RigaDistinta04 r;
    r.dstDitta = ditta;
    r.dstData = giorno;
    r.dstCliente = cliente;
    r.dstCausale = versamento ? CausaleVersamento : CausalePrelievo;
    r.dstMoneta = QStringLiteral("LIT");
    r.dstImporto = importo;
    r.dstCodP = descrizione.trimmed();
    return r;
}

ControlloSaldi::ControlloSaldi(CampiMaschera &campi)
    : txt(campi),
      vista(campi, {{CampoCodiceCliente, CampoSaldoCodice}, {CampoNomeCliente, CampoSaldoNome}},
            false),
      clienti(vista), descrizione(LeggiDescrizioneSaldo())
{
}

int ControlloSaldi::ControllaSaldo(int indice)
{
    CampoFuoco = 0;
    switch (indice) {
    case CampoSaldoCodice:
    case CampoSaldoNome: {
        const int codice = clienti.ControllaCampo(indice == CampoSaldoCodice
                                                      ? CampoCodiceCliente
                                                      : CampoNomeCliente);
        if (clienti.CampoFuoco == CampoNomeCliente)
            CampoFuoco = CampoSaldoNome;
        // A name without a match has no words of its own on the slips; here
        // it says the client is unknown.
        codiceStop() = codice > 0 ? static_cast<std::int16_t>(indice) : 0;
        return codiceStop();
    }
    case CampoSaldoAnno: {
        codiceStop() = CampoSaldoAnno;
        const double valore = CDbl(DataDaCampo(txt.testo(indice).trimmed()));
        const int anno = valore > 0 && valore < 1e6 ? int(valore) : 0;
        if (anno == 0) {
            codiceStop() = 0;
            return 0;
        }
        const std::optional<QDate> data = LeggiData(QStringLiteral("01/01/")
                                                    + QString::number(anno));
        if (!data)
            return codiceStop();
        DataSaldo = GiornoDaData(*data);
        txt.imposta(CampoSaldoDescrizione, DescrizioneAnno(descrizione, anno));
        codiceStop() = 0;
        return 0;
    }
    case CampoSaldoImporto: {
        codiceStop() = CampoSaldoImporto;
        const std::optional<double> importo = LeggiImporto(txt.testo(indice));
        if (!importo)
            return codiceStop();
        ImportoSaldo = *importo;
        // Lire have no decimals, and show their thousands.
        txt.imposta(indice, Format(ImportoSaldo, QStringLiteral("#,###,###,###,###")));
        codiceStop() = 0;
        return 0;
    }
    default:
        codiceStop() = 0;
        return 0;
    }
}

QString TestoErroreSaldo(int codice)
{
    switch (codice) {
    case CampoSaldoCodice:
    case CampoSaldoNome: return QStringLiteral("CLIENTE NON CODIFICATO");
    case CampoSaldoAnno: return QStringLiteral("ANNO NON INDICATO");
    case CampoSaldoImporto: return QStringLiteral("IMPORTO NON INDICATO");
    default: return QString();
    }
}

int MostraErroreSaldo()
{
    const std::int16_t codice = codiceStop();
    const QString testo = TestoErroreSaldo(codice);
    if (!testo.isEmpty()) {
        sessione().TestoErrore = testo;
        Messaggio(testo, QStringLiteral("KELVAR - ERRORE N. ") + QString::number(codice),
                  Icona::Stop);
    }
    return codice;
}

} // namespace sorvane
