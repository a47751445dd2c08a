#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QXmlStreamReader>

namespace Support
{

/// A written report, read back strictly: every element closed in its order, every attribute quoted.
class ReportDocument
{
public: // records
    struct Row
    {
        QStringList cells;
        QString lastClass; ///< class of the last cell
    };

    struct Table
    {
        QStringList head;
        QList<Row> rows;
    };

public: // construction
    explicit ReportDocument(const QString& html)
        : m_xml(closed(html))
    {
        while (!m_xml.atEnd())
            readToken(m_xml.readNext());
    }

public: // queries
    /// Empty when the document is well formed.
    [[nodiscard]] QString error() const
    {
        return m_xml.hasError() ? m_xml.errorString() : QString();
    }

public: // what it holds, in order
    QList<Table> tables;
    QStringList elements;  ///< names of all elements
    QStringList images;    ///< sources
    QStringList headings;  ///< texts of h1 to h4
    QStringList results;   ///< texts of the paragraphs
    QStringList listItems; ///< texts
    QString policy;        ///< of the content
    QString charset;

private: // helpers
    /// HTML leaves some elements without an end; XML does not.
    static QString closed(QString html)
    {
        static const QRegularExpression empty(QStringLiteral("<(meta|br|img)\\b([^<>]*)>"));
        return html.replace(empty, QStringLiteral("<\\1\\2/>")).trimmed();
    }

    void readToken(QXmlStreamReader::TokenType token)
    {
        if (token == QXmlStreamReader::StartElement)
            begin();
        else if (token == QXmlStreamReader::Characters)
            m_text += m_xml.text();
        else if (token == QXmlStreamReader::EndElement)
            end();
    }

    void begin()
    {
        const QString name = m_xml.name().toString();
        const QXmlStreamAttributes attributes = m_xml.attributes();
        elements.append(name);
        if (name != QLatin1String("b") && name != QLatin1String("span") && name != QLatin1String("br"))
            m_text.clear();
        if (name == QLatin1String("table"))
            tables.append(Table());
        else if (name == QLatin1String("tr") && m_inBody)
            tables.last().rows.append(Row());
        else if (name == QLatin1String("tbody"))
            m_inBody = true;
        else if (name == QLatin1String("img"))
            images.append(attributes.value(QLatin1String("src")).toString());
        else if (name == QLatin1String("meta"))
            readMeta(attributes);
        else if (name == QLatin1String("td"))
            tables.last().rows.last().lastClass = attributes.value(QLatin1String("class")).toString();
    }

    void readMeta(const QXmlStreamAttributes& attributes)
    {
        if (attributes.hasAttribute(QLatin1String("charset")))
            charset = attributes.value(QLatin1String("charset")).toString();
        else
            policy = attributes.value(QLatin1String("content")).toString();
    }

    void end()
    {
        const QString name = m_xml.name().toString();
        if (name == QLatin1String("td"))
            tables.last().rows.last().cells.append(m_text);
        else if (name == QLatin1String("th"))
            tables.last().head.append(m_text);
        else if (name == QLatin1String("tbody"))
            m_inBody = false;
        else if (name == QLatin1String("p"))
            results.append(m_text);
        else if (name == QLatin1String("li"))
            listItems.append(m_text);
        else if (name.size() == 2 && name.startsWith(QLatin1Char('h')) && name.at(1).isDigit())
            headings.append(m_text);
    }

private: // data
    QXmlStreamReader m_xml;
    QString m_text;
    bool m_inBody = false;
};

} // namespace Support
