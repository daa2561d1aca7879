#include "reports/FileCsv.h"

#include "reports/Esporta.h"

namespace sorvane {

namespace {

#ifdef Q_OS_WIN
const char FineRiga[] = "\r\n";
#else
const char FineRiga[] = "\n";
#endif

} // namespace

FileCsv::FileCsv(const QString &percorso) : m_file(percorso)
{
    m_blocco.reserve(Blocco + 64 * 1024);
}

bool FileCsv::apri(QString *errore)
{
    if (m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        m_blocco.append("\xEF\xBB\xBF");
        return true;
    }
    return fallita(errore);
}

bool FileCsv::riga(const QStringList &campi, QString *errore)
{
    for (const QString &c : campi)
        campo(c);
    return fineRiga(errore);
}

void FileCsv::campo(QStringView testo)
{
    bool ascii = true;
    bool quota = false;
    for (const QChar c : testo) {
        const char16_t u = c.unicode();
        ascii = ascii && u < 0x80;
        quota = quota || u == u';' || u == u'"' || u == u'\r' || u == u'\n';
    }
    if (quota) {
        m_blocco.append(CampoCsv(testo.toString()).toUtf8());
    } else if (ascii) {
        const qsizetype n = m_blocco.size();
        m_blocco.resize(n + testo.size());
        char *o = m_blocco.data() + n;
        for (const QChar c : testo)
            *o++ = char(c.unicode());
    } else {
        m_blocco.append(testo.toUtf8());
    }
    m_blocco.append(Separatore);
}

bool FileCsv::fineRiga(QString *errore)
{
    m_blocco.append(FineRiga);
    return m_blocco.size() < Blocco || svuota(errore);
}

bool FileCsv::chiudi(QString *errore)
{
    if (!svuota(errore))
        return false;
    m_file.close();
    return true;
}

bool FileCsv::svuota(QString *errore)
{
    if (m_file.write(m_blocco) != m_blocco.size())
        return fallita(errore);
    m_blocco.resize(0); // keeps its room for the next block
    return true;
}

bool FileCsv::fallita(QString *errore)
{
    if (errore)
        *errore = m_file.errorString();
    return false;
}

} // namespace sorvane
