#include "platform/binary_file.h"

#include "platform/runtime_error.h"

#include <QFileInfo>

namespace zor {

// Unbuffered: every Put is on its way to the disk when it returns, and a
// write that failed leaves nothing in a buffer to be written later over
// what its caller put back.
BinaryFile::BinaryFile(FileSystem& fs, const QString& path, Mode mode) : file_(path) {
    if (QFileInfo(path).isDir()) throw RuntimeError::PathFileAccessError();
    if (mode == ReadOnly) {
        if (!file_.exists()) throw RuntimeError::FileNotFound();
        if (!file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) throw RuntimeError::PermissionDenied();
    } else if (!file_.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
        if (!QFileInfo(QFileInfo(path).path()).isDir()) throw RuntimeError::PathNotFound();
        throw RuntimeError::PermissionDenied();
    }
    hold_ = FileHold(fs, path);
}

qint64 BinaryFile::Length() const { return file_.size(); }

QByteArray BinaryFile::Get(qint64 position, qint64 n) {
    if (position < 1 || n < 0) throw RuntimeError::InvalidProcedureCall();
    const qint64 available = file_.size() - (position - 1);
    if (available <= 0 || n == 0) return {};
    if (!file_.seek(position - 1)) throw RuntimeError(57, QStringLiteral("Device I/O error"));
    QByteArray bytes = file_.read(std::min(n, available));
    if (bytes.isNull() && file_.error() != QFileDevice::NoError) throw RuntimeError(57, QStringLiteral("Device I/O error"));
    return bytes;
}

void BinaryFile::Put(qint64 position, const QByteArray& bytes) {
    if (position < 1) throw RuntimeError::InvalidProcedureCall();
    if (!file_.isWritable()) throw RuntimeError::PermissionDenied();
    if (position - 1 > file_.size() && !file_.resize(position - 1))
        throw RuntimeError(61, QStringLiteral("Disk full"));
    if (!file_.seek(position - 1) || file_.write(bytes) != bytes.size() || !file_.flush())
        throw RuntimeError(61, QStringLiteral("Disk full"));
}

void BinaryFile::SetLength(qint64 length) {
    if (length < 0) throw RuntimeError::InvalidProcedureCall();
    if (!file_.isWritable()) throw RuntimeError::PermissionDenied();
    if (!file_.resize(length)) throw RuntimeError(61, QStringLiteral("Disk full"));
}

}  // namespace zor
