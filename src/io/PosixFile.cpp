#include "io/PosixFile.h"

#include "io/PosixCalls.h"
#include "io/PosixStatus.h"

#include <QFile>
#include <QRandomGenerator>

#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using Posix::Attributes;
using Posix::Path;
using Posix::statusOf;
using Posix::uninterrupted;

namespace
{

/// As many links in a row as Linux itself follows.
constexpr int MOST_LINKS = 40;

constexpr std::size_t CHUNK = 65'536; // [bytes]

// Systems without synchronized input and output have only the call that syncs more.
#if defined(_POSIX_SYNCHRONIZED_IO) && _POSIX_SYNCHRONIZED_IO > 0
constexpr auto syncContent = fdatasync;
#else
constexpr auto syncContent = fsync;
#endif

constexpr mode_t ALL_PERMISSIONS = S_ISUID | S_ISGID | S_ISVTX | S_IRWXU | S_IRWXG | S_IRWXO;
constexpr mode_t WRITABLE_BY_ANYBODY = S_IWUSR | S_IWGRP | S_IWOTH;

Path folderOf(const Path& path)
{
    return path.has_parent_path() ? path.parent_path() : Path(".");
}

/// Whether the folder said no, rather than the disk.
bool isRefusal(int error)
{
    return error == EACCES || error == EPERM || error == EROFS;
}

/// As far as the system lets this user; what became of it is to be looked at.
void makeAlike(int descriptor, const struct stat& model)
{
    [[maybe_unused]] const int owner = fchown(descriptor, model.st_uid, model.st_gid);
    [[maybe_unused]] const int permissions = fchmod(descriptor, model.st_mode & ALL_PERMISSIONS);
}

bool isRegular(const std::optional<struct stat>& status)
{
    return status && S_ISREG(status->st_mode);
}

/// Looks twice: before, because opening some devices does something, and after, because what was
/// looked at may have been replaced by a pipe, whose opening waits if it is not told not to.
int openExisting(const Path& path, Posix::ExistingFile::Use use)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return Posix::OpenFile::NONE;
    const int usual = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    const int flags = use == Posix::ExistingFile::Use::Read ? O_RDONLY : O_RDWR | O_NOFOLLOW;
    const int descriptor = uninterrupted([&] { return open(path.c_str(), flags | usual); });
    if (isRegular(statusOf(descriptor)))
        return descriptor;
    close(descriptor); // if it was opened
    return Posix::OpenFile::NONE;
}

/// A name that starts with `beginning` and that nobody can have taken or planted before.
Path unforeseen(const Path& beginning)
{
    const QByteArray digits = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    return beginning.native() + digits.toStdString();
}

int openNew(const Path& path, Posix::NewFile::Readers readers)
{
    const mode_t own = S_IRUSR | S_IWUSR;
    const mode_t all = own | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH; // less the user's umask
    const mode_t mode = readers == Posix::NewFile::Readers::Owner ? own : all;
    return uninterrupted(
        [&] { return open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode); });
}

} // namespace

Path Posix::nativePath(const QString& path)
{
    return path.contains(QChar(u'\0')) ? Path() : Path(QFile::encodeName(path).toStdString());
}

std::optional<Path> Posix::followLinks(Path path)
{
    for (int links = 0; links <= MOST_LINKS; ++links) {
        std::error_code error;
        const Path target = std::filesystem::read_symlink(path, error);
        if (error)
            return path;
        path = path.parent_path() / target;
    }
    return std::nullopt;
}

FileFacts Posix::factsOf(const Path& path)
{
    FileFacts facts;
    const std::optional<struct stat> status = statusOf(path);
    if (!status) {
        facts.exists = errno != ENOENT;
        return facts;
    }
    facts.exists = true;
    facts.isRegular = S_ISREG(status->st_mode);
    facts.mayBeWritten = (status->st_mode & WRITABLE_BY_ANYBODY) != 0
                         && faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
    facts.hasOtherNames = status->st_nlink > 1;
    return facts;
}

bool Posix::isOwnFile(const Path& path)
{
    const std::optional<struct stat> status = statusOf(path);
    return isRegular(status) && status->st_uid == geteuid();
}

bool Posix::removeFile(const Path& path)
{
    return unlink(path.c_str()) == 0 || errno == ENOENT;
}

bool Posix::makePrivateFolder(const Path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folderOf(folder), error);
    [[maybe_unused]] const int isNew = mkdir(folder.c_str(), S_IRWXU);
    const std::optional<struct stat> status = statusOf(folder);
    const bool isOwn = status && S_ISDIR(status->st_mode) && status->st_uid == geteuid();
    return isOwn && chmod(folder.c_str(), S_IRWXU) == 0;
}

bool Posix::syncFolder(const Path& folder)
{
    const int descriptor =
        uninterrupted([&] { return open((folder / ".").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (descriptor == -1)
        return errno == EACCES;
    const int result = uninterrupted([&] { return fsync(descriptor); });
    const bool isSynced = result == 0 || errno == EINVAL || errno == ENOTSUP;
    close(descriptor);
    return isSynced;
}

namespace Posix
{

OpenFile::OpenFile(int descriptor)
    : m_descriptor(descriptor)
{
}

OpenFile::~OpenFile()
{
    if (isOpen())
        close(m_descriptor);
}

std::optional<QByteArray> OpenFile::read(qint64 most)
{
    QByteArray bytes;
    std::array<char, CHUNK> chunk{};
    for (;;) {
        const std::size_t room = std::min(chunk.size(), static_cast<std::size_t>(most - bytes.size()));
        const ssize_t got = uninterrupted([&] { return ::read(m_descriptor, chunk.data(), room); });
        if (got == -1)
            return std::nullopt;
        if (got == 0)
            return bytes;
        bytes.append(chunk.data(), got);
    }
}

bool OpenFile::write(const QByteArray& bytes)
{
    return lseek(m_descriptor, 0, SEEK_SET) == 0 && append(bytes.constData(), bytes.size());
}

bool OpenFile::copyFrom(OpenFile& source)
{
    std::array<char, CHUNK> chunk{};
    qint64 size = 0;
    for (;;) {
        const ssize_t got =
            uninterrupted([&] { return pread(source.m_descriptor, chunk.data(), chunk.size(), size); });
        if (got <= 0)
            return got == 0 && cut(size);
        if (!append(chunk.data(), got))
            return false;
        size += got;
    }
}

bool OpenFile::cut(qint64 size)
{
    return uninterrupted([&] { return ftruncate(m_descriptor, size); }) == 0;
}

bool OpenFile::lock()
{
    return isOpen() && (flock(m_descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK);
}

bool OpenFile::finish()
{
    const bool isSynced = uninterrupted([&] { return syncContent(m_descriptor); }) == 0;
    // Whatever it returns, there is nothing left to be closed again.
    const bool isClosed = close(m_descriptor) == 0;
    m_descriptor = NONE;
    return isSynced && isClosed;
}

bool OpenFile::append(const char* bytes, qint64 size)
{
    for (qint64 done = 0; done < size;) {
        const ssize_t written = uninterrupted(
            [&] { return ::write(m_descriptor, bytes + done, static_cast<std::size_t>(size - done)); });
        if (written == -1)
            return false;
        done += written;
    }
    return true;
}

ExistingFile::ExistingFile(const Path& path, Use use)
    : OpenFile(openExisting(path, use))
{
}

NewFile::NewFile(const Path& beginning, Readers readers)
    : NewFile(readers, unforeseen(beginning))
{
}

NewFile::NewFile(Readers readers, const Path& path)
    : OpenFile(openNew(path, readers))
    , m_path(path)
    , m_refused(!isOpen() && isRefusal(errno))
    , m_isTemporary(isOpen())
{
}

NewFile::~NewFile()
{
    if (m_isTemporary)
        removeFile(m_path);
}

void NewFile::resemble(const Path& model, FileFacts& facts)
{
    const std::optional<struct stat> wanted = statusOf(model);
    if (wanted)
        makeAlike(descriptor(), *wanted);
    const std::optional<struct stat> reached = statusOf(descriptor());
    const std::optional<Attributes> attributes = attributesOf(model);
    const bool areKnown = wanted && reached;
    facts.ownerWouldChange = !areKnown || wanted->st_uid != reached->st_uid;
    facts.groupWouldChange = !areKnown || wanted->st_gid != reached->st_gid;
    facts.permissionsWouldChange = !areKnown || ((wanted->st_mode ^ reached->st_mode) & ALL_PERMISSIONS) != 0;
    facts.attributesWouldChange = !attributes || attributes != attributesOf(m_path);
}

bool NewFile::moveTo(const Path& path)
{
    if (std::rename(m_path.c_str(), path.c_str()) != 0) {
        m_refused = isRefusal(errno);
        return false;
    }
    m_isTemporary = false;
    return true;
}

void NewFile::keep()
{
    m_isTemporary = false;
}

} // namespace Posix
