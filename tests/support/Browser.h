#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QUrl>

namespace Support
{

/// Stands for the desktop's browser while it lives.
class Browser : public QObject
{
    Q_OBJECT

public: // construction
    Browser()
    {
        QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open");
    }
    ~Browser() override
    {
        QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    }
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;

public: // what it was to show
    QList<QUrl> urls;

public slots:
    void open(const QUrl& url)
    {
        urls.append(url);
    }
};

} // namespace Support
