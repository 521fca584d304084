#pragma once
// VB's "Open ... For Binary": 1-based byte positions, reads that stop at the
// end of the file, writes that grow it. The file counts as held open while
// the object lives.
#include "platform/file_system.h"

#include <QByteArray>
#include <QFile>

namespace zor {

class BinaryFile {
public:
    enum Mode {
        ReadWrite,  // creates a missing file, as Open For Binary does
        ReadOnly,   // a missing file is error 53; nothing is created
    };
    BinaryFile(FileSystem& fs, const QString& path, Mode mode = ReadWrite);

    qint64 Length() const;
    // Up to n bytes from the 1-based position; fewer (or none) at the end.
    QByteArray Get(qint64 position, qint64 n);
    // Writes at the 1-based position; a gap past the end reads back as zeros.
    void Put(qint64 position, const QByteArray& bytes);
    // Cuts the file to `length` bytes, or grows it with zeros.
    void SetLength(qint64 length);

private:
    QFile file_;
    FileHold hold_;
};

}  // namespace zor
