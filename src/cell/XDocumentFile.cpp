#include "cell/XDocumentFile.h"

#include "common/XByteCursor.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace huge {

namespace {

/// The two longest blocks that there can be.
constexpr int64_t maxFileSize = 2 * (int64_t(INT_MAX) + 4);

[[noreturn]] void fail(const char* what, const xstd::XString& path, const char* reason)
{
    throw std::runtime_error(xstd::XString(what) + path + ": " + reason);
}

[[noreturn]] void failWithErrno(const char* what, const xstd::XString& path)
{
    fail(what, path, std::strerror(errno));
}

/// An open file, closed with its owner.
class File {
public:
    explicit File(int handle) noexcept : m_handle(handle) {}
    ~File()
    {
        if (m_handle >= 0)
            ::close(m_handle);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    int handle() const noexcept { return m_handle; }
    bool close() noexcept { return ::close(std::exchange(m_handle, -1)) == 0; }

private:
    int m_handle;
};

/// The content of an open file. It may grow or shrink meanwhile, so its end counts and not what
/// its size was.
std::vector<uint8_t> readAll(const File& file, size_t size, const xstd::XString& path)
{
    std::vector<uint8_t> bytes(size + 1);
    size_t count = 0;
    for (;;) {
        if (count == bytes.size())
            bytes.resize(bytes.size() * 2);
        const ssize_t got = ::read(file.handle(), bytes.data() + count, bytes.size() - count);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            failWithErrno("can't read ", path);
        if (got == 0)
            break;
        count += static_cast<size_t>(got);
        if (count > static_cast<size_t>(maxFileSize))
            fail("can't read ", path, "the file is too long for a document");
    }
    bytes.resize(count);
    return bytes;
}

void writeAll(const File& file, const std::vector<uint8_t>& bytes, const xstd::XString& path)
{
    size_t count = 0;
    while (count < bytes.size()) {
        const ssize_t put = ::write(file.handle(), bytes.data() + count, bytes.size() - count);
        if (put < 0 && errno == EINTR)
            continue;
        if (put < 0)
            failWithErrno("can't write ", path);
        count += static_cast<size_t>(put);
    }
}

/// The file that a path means, behind links; the path itself if there is none yet.
xstd::XString targetOf(const xstd::XString& path)
{
    const std::unique_ptr<char, decltype(&std::free)> target(::realpath(path.c_str(), nullptr),
                                                             &std::free);
    return target ? xstd::XString(target.get()) : path;
}

/// The permissions for a file that takes the place of `path`.
mode_t modeFor(const xstd::XString& path)
{
    struct stat old = {};
    if (::stat(path.c_str(), &old) == 0) {
        if (!S_ISREG(old.st_mode))
            fail("can't write ", path, "it is no regular file");
        return old.st_mode & 07777;
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

/// Makes the new name of a file last. Some file systems can't, and then it is left to them.
void syncFolderOf(const xstd::XString& path)
{
    const size_t slash = path.rfind('/');
    const xstd::XString folder =
        slash == path.npos ? xstd::XString(".") : xstd::XString(path.substr(0, slash + 1));
    const File file(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (file.handle() >= 0)
        ::fsync(file.handle());
}

/// A new file beside the one that it is to replace; gone with its owner, unless it has replaced it.
class Replacement {
public:
    explicit Replacement(const xstd::XString& path)
        : m_path(path), m_mode(modeFor(path)), m_name(path + ".XXXXXX"),
          m_file(::mkostemp(m_name.data(), O_CLOEXEC)), m_exists(m_file.handle() >= 0)
    {}
    ~Replacement()
    {
        if (m_exists && !m_isDone)
            ::unlink(m_name.c_str());
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    /// False where the folder allows no new file; errno tells why.
    bool exists() const noexcept { return m_exists; }

    void commit(const std::vector<uint8_t>& bytes)
    {
        writeAll(m_file, bytes, m_path);
        if (::fchmod(m_file.handle(), m_mode) != 0 || ::fsync(m_file.handle()) != 0 ||
            !m_file.close() || ::rename(m_name.c_str(), m_path.c_str()) != 0)
            failWithErrno("can't write ", m_path);
        m_isDone = true;
        syncFolderOf(m_path);
    }

private:
    xstd::XString m_path;
    mode_t m_mode;
    xstd::XString m_name;
    File m_file;
    bool m_exists;
    bool m_isDone = false;
};

/// A copy of a file among the temporary ones; it stays unless it is removed.
xstd::XString keepCopy(const xstd::XString& path)
{
    const char* folder = std::getenv("TMPDIR");
    xstd::XString name = xstd::XString(folder ? folder : "/tmp") + "/tavix.XXXXXX";
    const File copy(::mkostemp(name.data(), O_CLOEXEC));
    if (copy.handle() < 0)
        failWithErrno("can't keep a copy of ", path);
    const File old(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (old.handle() < 0)
        failWithErrno("can't read ", path);
    try {
        writeAll(copy, readAll(old, 0, path), name);
        if (::fsync(copy.handle()) != 0)
            failWithErrno("can't write ", name);
    } catch (...) {
        ::unlink(name.c_str());
        throw;
    }
    return name;
}

/// Puts the bytes in the place of the file's own, which are gone from then on.
void writeOver(const xstd::XString& path, const std::vector<uint8_t>& bytes)
{
    const File file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (file.handle() < 0)
        failWithErrno("can't write ", path);
    const xstd::XString copy = keepCopy(path);
    try {
        writeAll(file, bytes, path);
        if (::ftruncate(file.handle(), static_cast<off_t>(bytes.size())) != 0 ||
            ::fsync(file.handle()) != 0)
            failWithErrno("can't write ", path);
    } catch (const std::runtime_error& failure) {
        throw std::runtime_error(failure.what() + xstd::XString("; a copy of it is ") + copy);
    }
    ::unlink(copy.c_str());
}

} // namespace

std::vector<uint8_t> XDocumentFile::toVector() const
{
    xstd::XByteWriter bytes;
    bytes.putBytes(table);
    bytes.putBytes(view);
    return bytes.take();
}

XDocumentFile XDocumentFile::fromVector(const std::vector<uint8_t>& bytes)
{
    xstd::XByteCursor cursor(bytes);
    XDocumentFile document;
    document.table = cursor.getBytes("table image");
    document.view = cursor.getBytes("view image");
    if (!cursor.atEnd())
        xstd::XByteCursor::fail("The document goes on behind its end", cursor.offset());
    return document;
}

XDocumentFile XDocumentFile::load(const xstd::XString& path)
{
    // Without O_NONBLOCK a pipe that nobody writes to would never open.
    const File file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (file.handle() < 0)
        failWithErrno("can't open ", path);
    struct stat state = {};
    if (::fstat(file.handle(), &state) != 0)
        failWithErrno("can't read ", path);
    if (!S_ISREG(state.st_mode))
        fail("can't read ", path, "it is no regular file");
    if (state.st_size > maxFileSize)
        fail("can't read ", path, "the file is too long for a document");
    const std::vector<uint8_t> bytes = readAll(file, static_cast<size_t>(state.st_size), path);
    try {
        return fromVector(bytes);
    } catch (const std::runtime_error& damage) {
        fail("can't read ", path, damage.what());
    }
}

void XDocumentFile::save(const xstd::XString& path) const
{
    const std::vector<uint8_t> bytes = toVector();
    const xstd::XString target = targetOf(path);
    Replacement replacement(target);
    if (replacement.exists()) {
        replacement.commit(bytes);
        return;
    }
    const int reason = errno;
    if (::access(target.c_str(), F_OK) != 0) {
        errno = reason;
        failWithErrno("can't write ", path);
    }
    writeOver(target, bytes);
}

} // namespace huge
