#include "platform/linux/storage/AtomicFile.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavro {

namespace {

class FileDescriptor {
public:
    explicit FileDescriptor(int number)
        : m_number(number) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (m_number >= 0)
            ::close(m_number);
    }
    int get() const { return m_number; }

private:
    int m_number;
};

int writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return errno;
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    // On disk before it takes the name: after a power failure the file would else be there, and empty.
    return ::fsync(descriptor) == 0 ? 0 : errno;
}

/// Makes the new name survive a power failure too.
void synchronizeFolder(const std::filesystem::path& folder) {
    const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.get() >= 0)
        ::fsync(descriptor.get());
}

/// In the names of temporary files, between that of the file and some letters and digits.
constexpr auto mark = ".TavroPRO-";
constexpr std::size_t lengthOfNumber = 6;

bool isTemporaryOf(const std::string& file, const std::string& name) {
    const auto start = file + mark;
    return name.size() == start.size() + lengthOfNumber && name.starts_with(start) &&
           std::all_of(name.begin() + static_cast<std::ptrdiff_t>(start.size()), name.end(),
                       [](unsigned char character) { return std::isalnum(character); });
}

/// Whether it is a file of ours that nobody is writing.
bool isRemnant(const std::filesystem::path& file) {
    const FileDescriptor descriptor(::open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    return descriptor.get() >= 0 && ::fstat(descriptor.get(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == ::geteuid() && ::flock(descriptor.get(), LOCK_EX | LOCK_NB) == 0;
}

} // namespace

int readFile(const std::filesystem::path& file, std::size_t atMost, std::string& bytes) {
    // Without waiting: opening a pipe would last until somebody writes to it.
    const FileDescriptor descriptor(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (descriptor.get() < 0 || ::fstat(descriptor.get(), &status) != 0)
        return errno;
    if (!S_ISREG(status.st_mode))
        return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    bytes.resize(atMost + 1);
    std::size_t length = 0;
    while (length < bytes.size()) {
        const auto count = ::read(descriptor.get(), bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno != EINTR)
            return errno;
        if (count == 0)
            break;
        length += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    if (length > atMost)
        return EFBIG;
    bytes.resize(length);
    return 0;
}

int replaceFile(const std::filesystem::path& file, std::string_view bytes) {
    const auto folder = file.parent_path();
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        return error.value();
    // In the same folder, since a rename does not lead from one file system to another.
    auto temporary = file.string() + mark + std::string(lengthOfNumber, 'X');
    const FileDescriptor descriptor(::mkostemp(temporary.data(), O_CLOEXEC)); // mode 0600
    if (descriptor.get() < 0)
        return errno;
    ::flock(descriptor.get(), LOCK_EX | LOCK_NB); // which says that it is no remnant
    int failure = writeAll(descriptor.get(), bytes);
    if (failure == 0 && ::rename(temporary.c_str(), file.c_str()) != 0)
        failure = errno;
    if (failure == 0)
        synchronizeFolder(folder);
    else
        ::unlink(temporary.c_str());
    return failure;
}

void removeRemnants(const std::filesystem::path& file) {
    std::error_code error;
    std::filesystem::directory_iterator entry(file.parent_path(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
        if (isTemporaryOf(file.filename(), entry->path().filename()) && isRemnant(entry->path()))
            ::unlink(entry->path().c_str());
}

} // namespace tavro
