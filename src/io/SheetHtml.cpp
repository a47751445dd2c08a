#include "io/SheetHtml.h"

using namespace Qt::StringLiterals;

namespace
{

/// A name is a label beside numbers, not a text.
constexpr qsizetype LONGEST_NAME = 60;

QString cell(const QString& tag, const QString& html, bool isWide)
{
    return u'<' + tag + (isWide ? u" align='left'>"_s : u" align='right'>"_s) + html + u"</"_s + tag + u'>';
}

QString row(const QString& tag, const QStringList& cells, const QList<int>& wide)
{
    QString html = u"<tr>"_s;
    for (qsizetype i = 0; i < cells.size(); ++i)
        html += cell(tag, cells.at(i), wide.contains(static_cast<int>(i)));
    return html + u"</tr>"_s;
}

bool isShown(QChar c)
{
    return c == u' ' || (c.isPrint() && !c.isSpace() && c.category() != QChar::Other_PrivateUse)
           || c.isSurrogate();
}

} // namespace

QString SheetHtml::plainName(const QString& text)
{
    QString shown = text.size() > LONGEST_NAME ? text.left(LONGEST_NAME - 1) + u'…' : text;
    for (QChar& c : shown) {
        if (!isShown(c))
            c = QChar::ReplacementCharacter;
    }
    return shown;
}

QString SheetHtml::name(const QString& text)
{
    return plainName(text).toHtmlEscaped();
}

QString SheetHtml::heading(int level, const QString& html)
{
    const QString tag = u'h' + QString::number(level);
    return u'<' + tag + u'>' + html + u"</"_s + tag + u'>';
}

QString SheetHtml::paragraph(const QString& html)
{
    return u"<p>"_s + html + u"</p>"_s;
}

QString SheetHtml::note(const QString& html)
{
    return u"<p class='note'>"_s + html + u"</p>"_s;
}

QString SheetHtml::picture(QChar which)
{
    return u"<p class='picture'>"_s + which + u"</p>"_s;
}

QString SheetHtml::table(const QStringList& head, const QList<QStringList>& rows, const QList<int>& wide)
{
    QString html = u"<table width='100%' border='1' cellspacing='0' cellpadding='3'><thead>"_s
                   + row(u"th"_s, head, wide) + u"</thead><tbody>"_s;
    for (const QStringList& cells : rows)
        html += row(u"td"_s, cells, wide);
    return html + u"</tbody></table>"_s;
}
