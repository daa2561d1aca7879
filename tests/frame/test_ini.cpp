#include "frame/core/Ini.h"

#include "support/CartellaProva.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace sorvane;
using sorvane::prova::CartellaProva;

namespace {

QString Ripeti(char c, int n)
{
    return QString(n, QLatin1Char(c));
}

class IniProva : public ::testing::Test
{
protected:
    CartellaProva m_dir;
};

} // namespace

TEST_F(IniProva, ValoreTroncatoA99CaratteriPrimaDeiTagli)
{
    const QByteArray lungo = QByteArray(120, 'x');
    const QByteArray commentoOltre = QByteArray(98, 'a') + " ;commento";
    const QByteArray commentoDentro = QByteArray(90, 'b') + " ;commento";
    const QString f = m_dir.scrivi("a.ini", "[S]\nlungo=" + lungo + "\noltre=" + commentoOltre
                                                + "\ndentro=" + commentoDentro + "\n");
    EXPECT_EQ(LeggiIni(f, "S", "lungo"), Ripeti('x', 99));
    // The buffer ends after the blank: " ;" is no longer there to cut.
    EXPECT_EQ(LeggiIni(f, "S", "oltre"), Ripeti('a', 98));
    EXPECT_EQ(LeggiIni(f, "S", "dentro"), Ripeti('b', 90));
}

TEST_F(IniProva, TagliAlCommentoAlTabEAlNul)
{
    QByteArray testo = "[S]\n"
                       "commento=C:\\DATI ;la cartella dei dati\n"
                       "puntoevirgola=a;b;c\n"
                       "attaccato=valore;commento\n"
                       "tab=primo\tsecondo ;altro\n"
                       "spazi =   in mezzo   \n";
    testo += QByteArray("nul=prima", 9) + '\0' + QByteArray("dopo\n");
    const QString f = m_dir.scrivi("a.ini", testo);
    EXPECT_EQ(LeggiIni(f, "S", "commento"), "C:\\DATI");
    EXPECT_EQ(LeggiIni(f, "S", "puntoevirgola"), "a;b;c");
    EXPECT_EQ(LeggiIni(f, "S", "attaccato"), "valore;commento");
    EXPECT_EQ(LeggiIni(f, "S", "tab"), "primo");
    EXPECT_EQ(LeggiIni(f, "S", "spazi"), "in mezzo");
    EXPECT_EQ(LeggiIni(f, "S", "nul"), "prima");
}

TEST_F(IniProva, SezioniEChiaviSenzaMaiuscole)
{
    const QString f = m_dir.scrivi("a.ini", "orfana=prima di ogni sezione\n"
                                            "[Path]\n"
                                            "File=/dati\n"
                                            "FILE=doppione\n"
                                            "vuota=\n"
                                            "virgolette=\"  tra virgolette  \"\n"
                                            "[ altra ]\n"
                                            "orfana=di altra\n"
                                            "[PATH]\n"
                                            "solo=nella seconda\n");
    EXPECT_EQ(LeggiIni(f, "path", "file"), "/dati");
    EXPECT_EQ(LeggiIni(f, "PATH", "File"), "/dati"); // the first of two answers
    EXPECT_EQ(LeggiIni(f, "ALTRA", "ORFANA"), "di altra");
    EXPECT_EQ(LeggiIni(f, "path", "virgolette"), "tra virgolette");
    EXPECT_EQ(LeggiIni(f, "manca", "file"), "");
    // Only the first section of a name counts, as for the platform's reader.
    EXPECT_EQ(LeggiIni(f, "PATH", "solo"), "");
    EXPECT_EQ(LeggiIni(m_dir.file("manca.ini"), "PATH", "File"), "");

}

TEST_F(IniProva, Latin1EUtf8)
{
    const QString latin1 = m_dir.scrivi("l.ini", "[S]\nk=caff\xe8 citt\xe0\n");
    const QString utf8 = m_dir.scrivi("u.ini", "\xEF\xBB\xBF[S]\nk=caff\xC3\xA8\n");
    EXPECT_EQ(LeggiIni(latin1, "S", "k"), QString::fromUtf8("caffè città"));
    EXPECT_EQ(LeggiIni(utf8, "S", "k"), QString::fromUtf8("caffè"));

    // Each file keeps its encoding when written.
    ASSERT_TRUE(ScriviIni(latin1, "S", "n", QString::fromUtf8("però")));
    ASSERT_TRUE(ScriviIni(utf8, "S", "n", QString::fromUtf8("però")));
    EXPECT_EQ(m_dir.leggi("l.ini"), QByteArray("[S]\nk=caff\xe8 citt\xe0\nn=per\xf2\n"));
    EXPECT_EQ(m_dir.leggi("u.ini"),
              QByteArray("\xEF\xBB\xBF[S]\nk=caff\xC3\xA8\nn=per\xC3\xB2\n"));
    EXPECT_EQ(LeggiIni(latin1, "S", "n"), QString::fromUtf8("però"));
}

TEST_F(IniProva, ScriviIniConservaIlResto)
{
    const QByteArray prima = "; configurazione\r\n"
                             "[PATH]\r\n"
                             "FILE=C:\\DATI ;commento\r\n"
                             "; una nota\r\n"
                             "WORK=C:\\LAVORO\r\n"
                             "\r\n"
                             "[euro]\r\n"
                             "CODLIT=LIT\r\n";
    const QString f = m_dir.scrivi("a.ini", prima);

    ASSERT_TRUE(ScriviIni(f, "path", "file", "D:\\NUOVI"));
    QByteArray atteso = prima;
    atteso.replace("FILE=C:\\DATI ;commento", "FILE=D:\\NUOVI");
    EXPECT_EQ(m_dir.leggi("a.ini"), atteso);

    // A new key goes after the last one of its section, before the blank line.
    ASSERT_TRUE(ScriviIni(f, "PATH", "SAVE", "C:\\SAVE"));
    atteso.replace("WORK=C:\\LAVORO\r\n", "WORK=C:\\LAVORO\r\nSAVE=C:\\SAVE\r\n");
    EXPECT_EQ(m_dir.leggi("a.ini"), atteso);

    ASSERT_TRUE(ScriviIni(f, "STAMPA", "TIPO", "P"));
    atteso += "\r\n[STAMPA]\r\nTIPO=P\r\n";
    EXPECT_EQ(m_dir.leggi("a.ini"), atteso);

    EXPECT_EQ(LeggiIni(f, "PATH", "FILE"), "D:\\NUOVI");
    EXPECT_EQ(LeggiIni(f, "path", "save"), "C:\\SAVE");
    EXPECT_EQ(LeggiIni(f, "stampa", "tipo"), "P");
    EXPECT_EQ(LeggiIni(f, "EURO", "CODLIT"), "LIT");

    // The same value again leaves the file as it is.
    ASSERT_TRUE(ScriviIni(f, "STAMPA", "TIPO", "P"));
    EXPECT_EQ(m_dir.leggi("a.ini"), atteso);
}

TEST_F(IniProva, ScriviIniSuFileSenzaFineRigaESuFileNuovo)
{
    const QString f = m_dir.scrivi("lf.ini", "[A]\nx=1");
    ASSERT_TRUE(ScriviIni(f, "A", "y", "2"));
    EXPECT_EQ(m_dir.leggi("lf.ini"), QByteArray("[A]\nx=1\ny=2\n"));
    ASSERT_TRUE(ScriviIni(f, "A", "x", "uno\ndue"));
    EXPECT_EQ(LeggiIni(f, "A", "x"), "uno due");
    EXPECT_EQ(LeggiIni(f, "A", "y"), "2");

    const QString nuovo = m_dir.file("nuovo.ini");
    ASSERT_TRUE(ScriviIni(nuovo, "SFONDO", "image", ""));
    ASSERT_TRUE(ScriviIni(nuovo, "SFONDO", "colore", "255"));
    EXPECT_EQ(LeggiIni(nuovo, "sfondo", "COLORE"), "255");
    EXPECT_EQ(LeggiIni(nuovo, "sfondo", "image"), "");
    EXPECT_FALSE(QFileInfo::exists(nuovo + ".tmp"));
}

TEST_F(IniProva, ScriviIniFallisceDoveNonPuoScrivere)
{
    m_dir.scrivi("piano.txt", "non una cartella");
    EXPECT_FALSE(ScriviIni(m_dir.file("manca/a.ini"), "S", "k", "v"));
    EXPECT_FALSE(ScriviIni(m_dir.file("piano.txt/a.ini"), "S", "k", "v"));
    QDir(m_dir.percorso()).mkdir("cartella.ini");
    EXPECT_FALSE(ScriviIni(m_dir.file("cartella.ini"), "S", "k", "v"));
    EXPECT_FALSE(ScriviIni(m_dir.file("a.ini"), "", "k", "v"));
    EXPECT_FALSE(QFileInfo::exists(m_dir.file("a.ini")));
}

TEST_F(IniProva, FileECartelle)
{
    const QString file = m_dir.scrivi("sotto/f.ini", "x");
    const QString cartella = m_dir.file("sotto");
    EXPECT_TRUE(EsisteFile(file));
    EXPECT_FALSE(EsisteFile(file, AttributoCartella));
    EXPECT_TRUE(EsisteFile(cartella, AttributoCartella));
    EXPECT_TRUE(EsisteFile(ConSeparatore(cartella), AttributoCartella));
    EXPECT_FALSE(EsisteFile(cartella));
    EXPECT_FALSE(EsisteFile("  "));
    // A path written with the other separator names the same file.
    QString altro = file;
    altro.replace(QDir::separator(), QDir::separator() == '/' ? QChar('\\') : QChar('/'));
    EXPECT_TRUE(EsisteFile(altro));

    const QString s = Separatore();
    EXPECT_EQ(ConSeparatore("a\\b/c"), "a" + s + "b" + s + "c" + s);
    EXPECT_EQ(CartellaDi("C:\\DATI\\SUB/file.ini"), "C:\\DATI\\SUB");
    EXPECT_EQ(CartellaDi("file.ini"), "");
    EXPECT_EQ(TagliaAlNul(QString("abc") + QChar(0) + "def"), "abc");

}
