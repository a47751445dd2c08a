#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace Support
{

/// A temporary directory of this test alone, which the program takes for the system's for as long as it
/// lives.
class TemporaryDirectory
{
public: // construction
    TemporaryDirectory()
        : m_before(qgetenv("TMPDIR"))
    {
        qputenv("TMPDIR", QFile::encodeName(m_folder.path()));
    }
    ~TemporaryDirectory()
    {
        qputenv("TMPDIR", m_before);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

public: // queries
    [[nodiscard]] QString path(const QString& name) const
    {
        return m_folder.filePath(name);
    }
    [[nodiscard]] QStringList files(const QString& pattern = QStringLiteral("*")) const
    {
        return QDir(m_folder.path()).entryList({pattern}, QDir::Files | QDir::Hidden, QDir::Name);
    }

private: // data
    QTemporaryDir m_folder;
    QByteArray m_before;
};

} // namespace Support
