#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTest>

namespace Support
{

/// What is in the file, or "unreadable".
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// Writes `bytes` into the file, over what is there, as another program would.
inline void put(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace Support
