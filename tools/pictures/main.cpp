#include "app/Appearance.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>

#include "Guide.h"
#include "Scenes.h"

using namespace Qt::StringLiterals;

namespace
{

int fail(const QString& text)
{
    QTextStream(stderr) << text << '\n';
    return 1;
}

bool write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

bool writeAll(const QString& folder, const QMap<QString, Picture>& pictures)
{
    bool written = QDir().mkpath(folder);
    for (auto picture = pictures.cbegin(); picture != pictures.cend(); ++picture)
        written = write(folder + u'/' + picture.key() + u".png"_s, picture->png) && written;
    return written;
}

} // namespace

/// velmora_pictures SOURCE GUIDE SCREENSHOT [FOLDER]: takes the pictures, writes GUIDE from SOURCE
/// and the picture of the whole window into SCREENSHOT; into FOLDER each picture by itself.
int main(int argc, char* argv[])
{
    Appearance::chooseStyle();
    QApplication application(argc, argv);
    Appearance::apply(application);
    QApplication::setCursorFlashTime(0); // one text cursor in every picture, not here and there one
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 4)
        return fail(u"velmora_pictures SOURCE GUIDE SCREENSHOT [FOLDER]"_s);

    QFile source(arguments.at(1));
    if (!source.open(QIODevice::ReadOnly))
        return fail(u"Cannot read "_s + source.fileName());
    const QMap<QString, Picture> pictures = Scenes::play();
    if (arguments.size() > 4 && !writeAll(arguments.at(4), pictures))
        return fail(u"Cannot write into "_s + arguments.at(4));

    const std::optional<QString> guide = Guide::embed(QString::fromUtf8(source.readAll()), pictures);
    if (!guide)
        return 1;
    if (!write(arguments.at(2), guide->toUtf8()))
        return fail(u"Cannot write "_s + arguments.at(2));
    if (!write(arguments.at(3), pictures.value(u"ventana"_s).png))
        return fail(u"Cannot write "_s + arguments.at(3));
    return 0;
}
