#pragma once

#include "io/SaveWay.h"

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <optional>

/// Files as POSIX systems have them, with the result of each call looked at: the one place that
/// makes these calls. Paths are in the system's own bytes.
namespace Posix
{

using Path = std::filesystem::path;

/// The system's name for `path`; empty, which is nobody's name, where it holds a zero character.
Path nativePath(const QString& path);

/// Where the symbolic links at `path` lead to in the end, whether or not something is there; nothing
/// if they lead in a circle.
std::optional<Path> followLinks(Path path);

/// All that is known of `path` before a file to replace it is made beside it. What cannot be looked
/// at exists and is not regular.
FileFacts factsOf(const Path& path);

/// Whether a regular file of this user is at `path`; a link to one is none.
bool isOwnFile(const Path& path);

/// True if nothing is at `path` any more: a file or link is removed, a folder is not.
bool removeFile(const Path& path);

/// Makes `folder`, parents included, for this user alone. Returns false if it is no folder of this
/// user's own then; a link to one is none.
bool makePrivateFolder(const Path& folder);

/// Puts the names in `folder` on the disk. True also where folders cannot be synced: on some network
/// disks, or when the user may not list this one.
bool syncFolder(const Path& folder);

/// An open file, or none; closed with the object.
class OpenFile
{
public:
    static constexpr int NONE = -1; ///< instead of a file, as the system's calls return it

public: // construction
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    virtual ~OpenFile();

public: // queries
    /// False where it could not be opened, or was closed.
    [[nodiscard]] bool isOpen() const
    {
        return m_descriptor != NONE;
    }

public: // commands; each returns whether all of it was done, false when the file is not open
    /// What follows in the file, at most `most` bytes. Nothing when reading fails.
    [[nodiscard]] std::optional<QByteArray> read(qint64 most);
    /// Puts `bytes` at the beginning; what the file holds beyond them stays.
    [[nodiscard]] bool write(const QByteArray& bytes);
    /// Makes the content of this file, which has just been opened, that of `source`, wherever that is
    /// being read or written.
    [[nodiscard]] bool copyFrom(OpenFile& source);
    /// What is beyond `size` [bytes] goes.
    [[nodiscard]] bool cut(qint64 size);
    /// Keeps other programs that ask for it from writing, until the file is closed. False when another
    /// does so already; where files cannot be locked, that is not known and true.
    [[nodiscard]] bool lock();
    /// Waits until the disk has all of it, and closes the file: also false if either was reported to
    /// have failed. A network disk tells only then that there is no room.
    [[nodiscard]] bool finish();

protected:
    explicit OpenFile(int descriptor);
    [[nodiscard]] int descriptor() const
    {
        return m_descriptor;
    }

private:
    [[nodiscard]] bool append(const char* bytes, qint64 size);

    int m_descriptor;
};

/// A regular file that is there. Neither a pipe nor a link is opened, nor does looking at one wait.
class ExistingFile : public OpenFile
{
public:
    enum class Use
    {
        Read, ///< also through a link
        Change,
    };

    /// Opens the file at `path`.
    ExistingFile(const Path& path, Use use);
};

/// A new file that is removed with the object, unless it was moved to where it belongs or is to be
/// kept.
class NewFile : public OpenFile
{
public:
    enum class Readers
    {
        Owner,
        AsUsual, ///< whoever may read what this user makes in that folder
    };

    /// Named by `beginning` and characters that nobody can foretell.
    NewFile(const Path& beginning, Readers readers);
    ~NewFile() override;
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

public: // queries
    /// Where it is.
    [[nodiscard]] const Path& path() const
    {
        return m_path;
    }
    /// True if it could not be made or moved because the folder does not permit it.
    [[nodiscard]] bool wasRefused() const
    {
        return m_refused;
    }

public: // commands
    /// Takes on owner, group and permissions of `model` as far as this user may give them to a file,
    /// and notes in `facts` what of them, and of the extended attributes, still differs.
    void resemble(const Path& model, FileFacts& facts);
    /// Takes the place of what is at `path`. The file has to be finished.
    [[nodiscard]] bool moveTo(const Path& path);
    void keep();

private:
    NewFile(Readers readers, const Path& path);

    Path m_path;
    bool m_refused = false;
    bool m_isTemporary = false;
};

} // namespace Posix
