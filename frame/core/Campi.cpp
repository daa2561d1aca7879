#include "frame/core/Campi.h"

#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Locale.h"
#include "frame/core/Valore.h"

#include <QDateTime>
#include <QLocale>

namespace sorvane {

namespace {

constexpr int TastoCtrlC = 3;
constexpr int TastoIndietro = 8;
constexpr int TastoCtrlR = 18;
constexpr int TastoCtrlV = 22;
constexpr int TastoMeno = 45;

bool IsCifra(int tasto) { return tasto >= '0' && tasto <= '9'; }

bool IsControlloPassante(int tasto)
{
    return tasto == TastoIndietro || tasto == TastoCtrlC || tasto == TastoCtrlR
           || tasto == TastoCtrlV;
}

// The text a value from a table reads as on screen: numbers and dates as the
// program's locale writes them, without group separators, so that 12.5 reads
// "12,5" on an Italian system and a date "31/12/2001".
QString TestoDiValore(const QVariant &valore)
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    switch (valore.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return locale.toString(valore.toDouble(), 'g', 15);
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::Short:
        return locale.toString(valore.toLongLong());
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UShort:
        return locale.toString(valore.toULongLong());
    case QMetaType::QDate:
        return valore.toDate().toString(QStringLiteral("dd/MM/yyyy"));
    case QMetaType::QDateTime: {
        const QDateTime dt = valore.toDateTime();
        if (dt.time().msecsSinceStartOfDay() == 0)
            return dt.date().toString(QStringLiteral("dd/MM/yyyy"));
        return dt.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    }
    default:
        return valore.toString();
    }
}

// A value that stands for a number: a number, a date, or a text that reads
// as either. Such values compare by their number, all others as texts.
bool ValeNumero(const QVariant &v)
{
    switch (v.typeId()) {
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return true;
    case QMetaType::QString:
        return IsNumeric(v) || IsDate(v.toString());
    default:
        return IsNumeric(v);
    }
}

bool PiuGrande(const QVariant &a, const QVariant &b)
{
    if (ValeNumero(a) && ValeNumero(b))
        return CDbl(a) > CDbl(b);
    return TestoDiValore(a) > TestoDiValore(b);
}

} // namespace

QVariant DataDaCampo(const QVariant &valore)
{
    if (IsEmpty(valore) || IsNull(valore))
        return QVariant();
    switch (valore.typeId()) {
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return CDbl(valore);
    case QMetaType::QString: {
        const QString t = valore.toString();
        if (t.trimmed().isEmpty())
            return QVariant();
        const qsizetype barra = t.indexOf(QLatin1Char('/'));
        if (barra >= 0 && t.indexOf(QLatin1Char('/'), barra + 1) > barra) {
            if (auto d = LeggiData(t))
                return double(GiornoDaData(*d));
            return QVariant();
        }
        return IsNumeric(valore) ? valore : QVariant();
    }
    default:
        return IsNumeric(valore) ? valore : QVariant();
    }
}

QString TestoDaCampo(const QVariant &valore, const QString &predefinito)
{
    const QString difetto = predefinito.trimmed().isEmpty() ? QStringLiteral(" ") : predefinito;
    if (IsEmpty(valore) || IsNull(valore))
        return difetto;
    const QString t = TestoDiValore(valore);
    if (t.trimmed().isEmpty() || t.startsWith(QChar(0)))
        return difetto;
    return t;
}

bool CarattereDigitato(int tasto)
{
    return tasto > 0 && tasto <= 0x10FFFF
           && QChar::category(char32_t(tasto)) != QChar::Other_Control;
}

void SoloCifre(int &tasto)
{
    if (IsControlloPassante(tasto))
        return;
    if (!IsCifra(tasto))
        tasto = 0;
}

void SoloImporto(int &tasto)
{
    // Either sign on the keypad gives the separator the locale reads amounts with.
    const int separatore = SeparatoreDecimale().unicode();
    if (tasto == '.' || tasto == ',')
        tasto = separatore;
    if (tasto == separatore || tasto == TastoMeno || IsControlloPassante(tasto))
        return;
    if (!IsCifra(tasto))
        tasto = 0;
}

int Maiuscolo(int &tasto)
{
    if (tasto >= 'a' && tasto <= 'z')
        tasto -= 32;
    return tasto;
}

QVariant MaggioreDi(const QVariant &a, const QVariant &b, const QVariant &c, const QVariant &d)
{
    QVariant massimo;
    for (const QVariant *v : {&a, &b, &c, &d}) {
        if (IsEmpty(*v) || IsNull(*v))
            continue;
        if (IsEmpty(massimo) || PiuGrande(*v, massimo))
            massimo = *v;
    }
    return massimo;
}

QString AllineaTesto(const QString &valore, int lunghezza)
{
    const QString t = valore.trimmed();
    if (t.isEmpty() || t.size() >= lunghezza)
        return valore;
    return t.rightJustified(lunghezza, QLatin1Char(' '));
}

QString AllineaCodice(const QString &valore, int lunghezza)
{
    const QString t = valore.trimmed();
    if (t.isEmpty() || t.size() >= lunghezza || !IsNumeric(t))
        return t;
    // Every numeric value is filled, a sign or a separator included: "-7"
    // becomes "000-7".
    return t.rightJustified(lunghezza, QLatin1Char('0'));
}

QString Virgolettato(const QString &testo)
{
    if (testo.trimmed().isEmpty())
        return testo;
    return QLatin1Char('"') + testo + QLatin1Char('"');
}

std::optional<double> LeggiImporto(const QString &testo)
{
    if (testo.trimmed().isEmpty())
        return 0.0;
    double valore = 0;
    if (!LeggiNumero(testo, &valore))
        return std::nullopt;
    return valore;
}

QString FormatoImporto(const QString &codiceMoneta, double valore, bool vuotoSeZero)
{
    // Codes compare as the store compares them: blanks around and case don't count.
    const bool lire =
        codiceMoneta.trimmed().compare(impostazioni().CodLit.trimmed(), Qt::CaseInsensitive) == 0;
    QString t = Format(valore, lire ? QStringLiteral("#,###,###,###,###")
                                    : QStringLiteral("##,###,###,###.##"));
    if (t.endsWith(QLatin1Char('.')) || t.endsWith(QLatin1Char(',')))
        t.chop(1);
    if (t.trimmed().isEmpty() && !vuotoSeZero)
        return QStringLiteral("0");
    return t;
}

QString GiornoTesto(int giorno) { return Format(double(giorno), QStringLiteral("00")); }

QString MeseTesto(int mese) { return Format(double(mese), QStringLiteral("00")); }

QString AnnoTesto(int anno) { return Format(double(anno), QStringLiteral("0000")); }

} // namespace sorvane
