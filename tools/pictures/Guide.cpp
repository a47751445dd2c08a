#include "Guide.h"

#include <QRegularExpression>
#include <QSet>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace
{

void printError(const QString& text)
{
    QTextStream(stderr) << text << '\n';
}

QString attributes(const Picture& picture)
{
    return u"src=\"data:image/png;base64,%1\" width=\"%2\" height=\"%3\""_s.arg(
        QString::fromLatin1(picture.png.toBase64()), QString::number(picture.size.width()),
        QString::number(picture.size.height()));
}

} // namespace

std::optional<QString> Guide::embed(const QString& source, const QMap<QString, Picture>& pictures)
{
    static const QRegularExpression place(u"src=\"@picture:(\\w+)@\""_s);
    QString result;
    QSet<QString> left(pictures.keyBegin(), pictures.keyEnd());
    qsizetype done = 0;
    bool complete = true;

    for (auto match = place.globalMatch(source); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        const QString name = found.captured(1);
        result += QStringView(source).mid(done, found.capturedStart() - done);
        result += attributes(pictures.value(name));
        done = found.capturedEnd();
        left.remove(name);
        if (!pictures.contains(name)) {
            printError(u"No such picture: "_s + name);
            complete = false;
        }
    }
    result += QStringView(source).mid(done);

    for (const QString& name : std::as_const(left))
        printError(u"Not in the guide: "_s + name);
    if (!complete || !left.isEmpty())
        return std::nullopt;
    return result;
}
