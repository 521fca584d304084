#include "platform/binary_file.h"

#include "platform/runtime_error.h"

#include <QFileInfo>

#include <algorithm>
#include <cerrno>

#include <unistd.h>

namespace zor {

// Unbuffered: every Put is on its way to the disk when it returns, and a
// write that failed leaves nothing in a buffer to be written later over
// what its caller put back.
// The look-ups that tell the failures apart come only after a failed open:
// every song the jukebox reads opens here. The toolkit refuses to open a
// directory.
BinaryFile::BinaryFile(FileSystem& fs, const QString& path, Mode mode) : file_(path) {
    const QIODevice::OpenMode how = (mode == ReadOnly ? QIODevice::ReadOnly : QIODevice::ReadWrite) | QIODevice::Unbuffered;
    if (!file_.open(how)) {
        const QFileInfo fi(path);
        if (fi.isDir()) throw RuntimeError::PathFileAccessError();
        if (mode == ReadOnly && !fi.exists()) throw RuntimeError::FileNotFound();
        if (mode != ReadOnly && !QFileInfo(fi.path()).isDir()) throw RuntimeError::PathNotFound();
        throw RuntimeError::PermissionDenied();
    }
    hold_ = FileHold(fs, path);
}

qint64 BinaryFile::Length() const { return file_.size(); }

QByteArray BinaryFile::Get(qint64 position, qint64 n) {
    if (position < 1 || n < 0) throw RuntimeError::InvalidProcedureCall();
    // A read asks the file's length only when the caller's count is larger
    // than any record or block: a song's frame scan and tag take one call.
    constexpr qint64 kReadWithoutLength = 1 << 16;
    if (n > kReadWithoutLength) n = std::min(n, std::max<qint64>(0, file_.size() - (position - 1)));
    if (n == 0) return {};
    QByteArray bytes(n, Qt::Uninitialized);
    qint64 got = 0;
    while (got < n) {
        const ssize_t r = ::pread(file_.handle(), bytes.data() + got, size_t(n - got), off_t(position - 1 + got));
        if (r < 0 && errno == EINTR) continue;
        if (r < 0) throw RuntimeError(57, QStringLiteral("Device I/O error"));
        if (r == 0) break;
        got += r;
    }
    if (got == 0) return {};
    bytes.truncate(got);
    return bytes;
}

void BinaryFile::Put(qint64 position, const QByteArray& bytes) {
    if (position < 1) throw RuntimeError::InvalidProcedureCall();
    if (!file_.isWritable()) throw RuntimeError::PermissionDenied();
    // Past the end the gap reads back as zeros.
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t w =
            ::pwrite(file_.handle(), bytes.constData() + done, size_t(bytes.size() - done), off_t(position - 1 + done));
        if (w < 0 && errno == EINTR) continue;
        if (w <= 0) throw RuntimeError(61, QStringLiteral("Disk full"));
        done += w;
    }
}

void BinaryFile::SetLength(qint64 length) {
    if (length < 0) throw RuntimeError::InvalidProcedureCall();
    if (!file_.isWritable()) throw RuntimeError::PermissionDenied();
    if (!file_.resize(length)) throw RuntimeError(61, QStringLiteral("Disk full"));
}

}  // namespace zor
