#include "frame/core/Ini.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>
#include <optional>

#ifdef Q_OS_WIN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <pwd.h>
#include <unistd.h>
#endif

namespace sorvane {

namespace {

// The classic reader hands values through a buffer of this size, NUL
// included.
constexpr qsizetype LunghezzaBuffer = 100;

const QByteArray BomUtf8("\xEF\xBB\xBF");

// A file as text, with what is needed to write it back the way it came:
// its encoding, its byte order mark and its line ending.
struct TestoIni
{
    QString testo;
    bool latin1 = false;
    bool bom = false;
    QString fineRiga;
};

QString FineRigaPredefinita()
{
#ifdef Q_OS_WIN
    return QStringLiteral("\r\n");
#else
    return QStringLiteral("\n");
#endif
}

// Empty text for a missing file; nothing at all when the file is there but
// cannot be read, so that a writer never replaces what it could not see.
std::optional<TestoIni> CaricaTesto(const QString &file)
{
    TestoIni t;
    QFile f(file);
    if (!f.exists()) {
        t.fineRiga = FineRigaPredefinita();
        return t;
    }
    if (!f.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray dati = f.readAll();
    if (dati.startsWith(BomUtf8)) {
        t.bom = true;
        dati.remove(0, BomUtf8.size());
    }
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    t.testo = utf8(dati);
    if (utf8.hasError()) {
        t.testo = QString::fromLatin1(dati);
        t.latin1 = true;
    }
    const qsizetype a = t.testo.indexOf(QLatin1Char('\n'));
    if (a < 0)
        t.fineRiga = FineRigaPredefinita();
    else if (a > 0 && t.testo.at(a - 1) == QLatin1Char('\r'))
        t.fineRiga = QStringLiteral("\r\n");
    else
        t.fineRiga = QStringLiteral("\n");
    return t;
}

// One line of the file, without its line ending.
QStringView Corpo(QStringView riga)
{
    while (riga.endsWith(QLatin1Char('\n')) || riga.endsWith(QLatin1Char('\r')))
        riga.chop(1);
    return riga;
}

// The name of a section header, or nothing when the line is not one.
std::optional<QStringView> NomeSezione(QStringView corpo)
{
    const QStringView t = corpo.trimmed();
    if (!t.startsWith(QLatin1Char('[')))
        return std::nullopt;
    QStringView nome = t.mid(1);
    const qsizetype chiusa = nome.indexOf(QLatin1Char(']'));
    if (chiusa >= 0)
        nome = nome.left(chiusa);
    return nome.trimmed();
}

QStringView NomeChiave(QStringView corpo)
{
    const qsizetype uguale = corpo.indexOf(QLatin1Char('='));
    return (uguale < 0 ? corpo : corpo.left(uguale)).trimmed();
}

// The value as the platform hands it: trimmed, and without the quotes that
// enclose it on both sides.
QString ValoreRiga(QStringView corpo)
{
    const qsizetype uguale = corpo.indexOf(QLatin1Char('='));
    if (uguale < 0)
        return QString();
    QStringView v = corpo.mid(uguale + 1).trimmed();
    if (v.size() > 1 && (v.front() == QLatin1Char('"') || v.front() == QLatin1Char('\''))
        && v.back() == v.front())
        v = v.mid(1, v.size() - 2);
    return v.toString();
}

bool Uguali(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool Commento(QStringView corpo)
{
    const QStringView t = corpo.trimmed();
    return t.isEmpty() || t.startsWith(QLatin1Char(';')) || t.startsWith(QLatin1Char('#'));
}

// Where a key stands, or would go, in the first section of that name.
struct Posizione
{
    qsizetype sezione = -1; // line of the header
    qsizetype chiave = -1;  // line of the key
    qsizetype ultima = -1;  // last line of the section that is neither blank nor a comment
};

Posizione Trova(const QStringList &righe, QStringView sezione, QStringView chiave)
{
    Posizione p;
    for (qsizetype i = 0; i < righe.size(); ++i) {
        const QStringView corpo = Corpo(righe.at(i));
        if (const auto nome = NomeSezione(corpo)) {
            if (p.sezione >= 0)
                break;
            if (Uguali(*nome, sezione))
                p.sezione = p.ultima = i;
            continue;
        }
        if (p.sezione < 0)
            continue;
        if (!Commento(corpo))
            p.ultima = i;
        if (Uguali(NomeChiave(corpo), chiave)) {
            p.chiave = i;
            break;
        }
    }
    return p;
}

// Lines with their own endings, so that joining them gives the file back.
QStringList Righe(const QString &testo)
{
    QStringList righe;
    qsizetype inizio = 0;
    while (inizio < testo.size()) {
        const qsizetype a = testo.indexOf(QLatin1Char('\n'), inizio);
        const qsizetype fine = a < 0 ? testo.size() : a + 1;
        righe.append(testo.mid(inizio, fine - inizio));
        inizio = fine;
    }
    return righe;
}

void ChiudiRiga(QString &riga, const QString &fineRiga)
{
    if (!riga.endsWith(QLatin1Char('\n')))
        riga += fineRiga;
}

QByteArray Codifica(const TestoIni &t)
{
    QByteArray dati;
    if (t.bom)
        dati = BomUtf8;
    if (t.latin1) {
        QStringEncoder latin1(QStringEncoder::Latin1);
        dati += latin1(t.testo);
    } else {
        dati += t.testo.toUtf8();
    }
    return dati;
}

bool SalvaTesto(const QString &file, const QByteArray &dati)
{
    QSaveFile f(file);
    // A file that the user may write inside a folder he may not (the system
    // configuration folder) is written in place, as the classic writer did.
    f.setDirectWriteFallback(true);
    if (!f.open(QIODevice::WriteOnly))
        return false;
    if (f.write(dati) != dati.size()) {
        f.cancelWriting();
        return false;
    }
    return f.commit();
}

bool ScriviChiave(const QString &file, const QString &sezione, const QString &chiave,
                  const QString &valore)
{
    if (file.trimmed().isEmpty() || sezione.trimmed().isEmpty() || chiave.trimmed().isEmpty())
        return false;
    std::optional<TestoIni> t = CaricaTesto(file);
    if (!t)
        return false;
    // A value is one line of the file.
    QString v = valore;
    v.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));

    QStringList righe = Righe(t->testo);
    const Posizione p = Trova(righe, sezione.trimmed(), chiave.trimmed());
    if (p.chiave >= 0) {
        QString &riga = righe[p.chiave];
        const QStringView corpo = Corpo(riga);
        const QString fine = riga.mid(corpo.size());
        riga = NomeChiave(corpo).toString() + QLatin1Char('=') + v + fine;
    } else if (p.sezione >= 0) {
        ChiudiRiga(righe[p.ultima], t->fineRiga);
        righe.insert(p.ultima + 1, chiave.trimmed() + QLatin1Char('=') + v + t->fineRiga);
    } else {
        if (!righe.isEmpty()) {
            ChiudiRiga(righe.last(), t->fineRiga);
            if (!Corpo(righe.last()).trimmed().isEmpty())
                righe.append(t->fineRiga);
        }
        righe.append(QLatin1Char('[') + sezione.trimmed() + QLatin1Char(']') + t->fineRiga);
        righe.append(chiave.trimmed() + QLatin1Char('=') + v + t->fineRiga);
    }
    const QString nuovo = righe.join(QString());
    if (nuovo == t->testo && QFileInfo::exists(file))
        return true;
    t->testo = nuovo;
    return SalvaTesto(file, Codifica(*t));
}

} // namespace

QString LeggiIni(const QString &file, const QString &sezione, const QString &chiave)
{
    if (file.trimmed().isEmpty() || chiave.trimmed().isEmpty())
        return QString();
    const std::optional<TestoIni> t = CaricaTesto(file);
    if (!t)
        return QString();
    const QStringList righe = Righe(t->testo);
    const Posizione p = Trova(righe, sezione.trimmed(), chiave.trimmed());
    if (p.chiave < 0)
        return QString();

    QString v = ValoreRiga(Corpo(righe.at(p.chiave)));
    qsizetype massimo = LunghezzaBuffer - 1;
    if (v.size() > massimo && v.at(massimo - 1).isHighSurrogate())
        --massimo;
    v.truncate(massimo);
    if (v.isEmpty())
        return v;
    v = TagliaAlNul(v);
    const qsizetype tab = v.indexOf(QLatin1Char('\t'));
    if (tab >= 0)
        v.truncate(tab);
    const qsizetype commento = v.indexOf(QLatin1String(" ;"));
    if (commento >= 0)
        v.truncate(commento);
    return v.trimmed();
}

bool ScriviIni(const QString &file, const QString &sezione, const QString &chiave,
               const QString &valore)
{
    const bool scritto = ScriviChiave(file, sezione, chiave, valore);
    // The classic writer let the window system catch up after each write.
    if (QCoreApplication::instance())
        QCoreApplication::processEvents();
    return scritto;
}

bool EsisteFile(const QString &percorso, int attributi)
{
    if (percorso.trimmed().isEmpty())
        return false;
    const QFileInfo info(PercorsoNativo(percorso));
    return (attributi & AttributoCartella) ? info.isDir() : info.isFile();
}

QString TagliaAlNul(const QString &testo)
{
    const qsizetype nul = testo.indexOf(QChar(0));
    return nul < 0 ? testo : testo.left(nul);
}

QString CartellaDi(const QString &percorso)
{
    const qsizetype ultimo = std::max(percorso.lastIndexOf(QLatin1Char('\\')),
                                      percorso.lastIndexOf(QLatin1Char('/')));
    return ultimo < 0 ? QString() : percorso.left(ultimo);
}

QString CartellaWindows()
{
#ifdef Q_OS_WIN
    wchar_t buffer[MAX_PATH + 1] = {};
    const UINT n = GetWindowsDirectoryW(buffer, MAX_PATH);
    if (n == 0 || n > MAX_PATH)
        return QString();
    return ConSeparatore(QString::fromWCharArray(buffer, int(n)).toUpper());
#else
    return QStringLiteral("/etc/");
#endif
}

QString NomeUtente()
{
    QString nome;
#ifdef Q_OS_WIN
    nome = qEnvironmentVariable("USERNAME");
    if (nome.isEmpty()) {
        wchar_t buffer[LunghezzaBuffer + 1] = {};
        DWORD n = LunghezzaBuffer;
        if (GetUserNameW(buffer, &n))
            nome = QString::fromWCharArray(buffer);
    }
#else
    nome = qEnvironmentVariable("USER");
    if (nome.isEmpty())
        nome = qEnvironmentVariable("LOGNAME");
    if (nome.isEmpty()) {
        if (const passwd *pw = getpwuid(geteuid()); pw && pw->pw_name)
            nome = QString::fromLocal8Bit(pw->pw_name);
    }
#endif
    return TagliaAlNul(nome).left(LunghezzaBuffer);
}

QString PercorsoNativo(const QString &percorso)
{
    QString p = percorso;
#ifdef Q_OS_WIN
    p.replace(QLatin1Char('/'), QLatin1Char('\\'));
#else
    p.replace(QLatin1Char('\\'), QLatin1Char('/'));
#endif
    return p;
}

QString ConSeparatore(const QString &percorso)
{
    QString p = PercorsoNativo(percorso);
    if (!p.endsWith(QDir::separator()))
        p += QDir::separator();
    return p;
}

QString Separatore()
{
    return QString(QDir::separator());
}

} // namespace sorvane
