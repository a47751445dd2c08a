#include "app/Appearance.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QImageReader>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

/// What the desktop is told of the program holds together.
class TestDesktop : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void icon_isLinkedInAndHasTheUsualSizes();
    void icon_ofEachSizeIsAPictureOfItsOwn();
    void icon_isThatOfTheApplication();
    void desktopFileName_isThatOfTheInstalledEntry();
    void windowClass_isThatOfTheDesktopEntry();

private: // helpers
    static QString desktopEntry(const QString& key);
};

void TestDesktop::initTestCase()
{
    Appearance::apply(*qApp);
}

QString TestDesktop::desktopEntry(const QString& key)
{
    const QString path =
        QStringLiteral(VELMORA_SOURCE_DIR "/packaging/%1.desktop").arg(QGuiApplication::desktopFileName());
    return QSettings(path, QSettings::IniFormat).value(u"Desktop Entry/"_s + key).toString();
}

void TestDesktop::icon_isLinkedInAndHasTheUsualSizes()
{
    const QList<QSize> sizes = QIcon(u":/icono-app.ico"_s).availableSizes();
    for (const int side : {16, 24, 32, 48, 64, 128, 256})
        QVERIFY2(sizes.contains(QSize(side, side)), qPrintable(QString::number(side)));
}

void TestDesktop::icon_ofEachSizeIsAPictureOfItsOwn()
{
    QImageReader reader(u":/icono-app.ico"_s);
    QCOMPARE(reader.imageCount(), 7);
    for (int i = 0; i < reader.imageCount(); ++i) {
        QVERIFY(reader.jumpToImage(i));
        const QImage image = reader.read();
        QVERIFY(!image.isNull());
        // the lower chord of the truss is sky blue in every size, and lies at the same height
        const QColor chord = image.pixelColor(image.width() / 2, image.height() * 26 / 32);
        QVERIFY2(chord.blue() > 150 && chord.red() < 60, qPrintable(chord.name()));
    }
}

void TestDesktop::icon_isThatOfTheApplication()
{
    QCOMPARE(QApplication::windowIcon().availableSizes().size(), 7);
}

void TestDesktop::desktopFileName_isThatOfTheInstalledEntry()
{
    QCOMPARE(desktopEntry(u"Name"_s), u"Velmora Master"_s);
    QCOMPARE(desktopEntry(u"Exec"_s), u"velmora-master %F"_s);
    QCOMPARE(desktopEntry(u"Icon"_s), QGuiApplication::desktopFileName());
}

void TestDesktop::windowClass_isThatOfTheDesktopEntry()
{
    // under X11 the class of a window is the application's name with a capital first letter
    QString name = QApplication::applicationName();
    name[0] = name.at(0).toUpper();
    QCOMPARE(desktopEntry(u"StartupWMClass"_s), name);
}

QTEST_MAIN(TestDesktop)
#include "tst_desktop.moc"
