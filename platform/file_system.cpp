#include "platform/file_system.h"

#include "platform/runtime_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

namespace zor {
namespace {

bool HasWildcards(const QString& name) { return name.contains(u'*') || name.contains(u'?'); }

QRegularExpression WildcardRegex(const QString& name) {
    QString rx;
    for (QChar c : name) {
        if (c == u'*') rx += QStringLiteral(".*");
        else if (c == u'?') rx += u'.';
        else rx += QRegularExpression::escape(QString(c));
    }
    return QRegularExpression(QRegularExpression::anchoredPattern(rx),
                              QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
}

bool CaseInsensitiveLess(const QString& a, const QString& b) {
    const int c = QString::compare(a, b, Qt::CaseInsensitive);
    return c != 0 ? c < 0 : a < b;
}

}  // namespace

QStringList FileSystem::DirList(const QString& pattern, int attr) {
    const QFileInfo pat(pattern);
    const QString name = pat.fileName();
    const QString dirPath = pat.path();
    const bool wantDirs = attr & vbDirectory;
    QStringList out;
    if (name.isEmpty()) return out;
    const bool everything = name == u"*";
    if (!HasWildcards(name)) {
        const QFileInfo fi(pattern);
        if (fi.exists() && (fi.isFile() || (wantDirs && fi.isDir())) && name != u"." && name != u"..") out << name;
        return out;
    }
    const QRegularExpression rx = WildcardRegex(name);
    // Without QDir::System: that would add dangling or looping links, FIFOs and
    // devices, none of which an exact look-up, FileLen or an open accepts as a
    // file (and a FIFO opened for reading waits for a writer for ever).
    QDir::Filters filters = QDir::Files | QDir::NoDotAndDotDot;
    if (wantDirs) filters |= QDir::Dirs;
    if (attr & vbHidden) filters |= QDir::Hidden;
    QDir dir(dirPath);
    for (const QString& entry : dir.entryList(filters, QDir::Unsorted))
        if (everything || rx.match(entry).hasMatch()) out << entry;
    std::sort(out.begin(), out.end(), CaseInsensitiveLess);
    return out;
}

QStringList FileSystem::Subdirectories(const QString& dir) {
    QStringList out = QDir(dir).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    std::sort(out.begin(), out.end(), CaseInsensitiveLess);
    return out;
}

QStringList FileSystem::FilesMatching(const QString& dir, const QString& patterns) {
    QStringList wanted = patterns.split(u';', Qt::SkipEmptyParts);
    for (QString& p : wanted) {
        p = p.trimmed();
        if (p == u"*.*") p = QStringLiteral("*");
    }
    if (wanted.isEmpty()) wanted << QStringLiteral("*");
    QStringList out;
    for (const QString& p : wanted) out += DirList(dir + u'/' + p);
    out.removeDuplicates();
    std::sort(out.begin(), out.end(), CaseInsensitiveLess);
    return out;
}

QString FileSystem::Dir(const QString& pattern, int attr) {
    pending_ = DirList(pattern, attr);
    return DirNext();
}

QString FileSystem::DirNext() { return pending_.isEmpty() ? QString() : pending_.takeFirst(); }

bool FileSystem::FileExists(const QString& path) { return QFileInfo(path).isFile(); }
bool FileSystem::DirExists(const QString& path) { return QFileInfo(path).isDir(); }

qint64 FileSystem::FileLen(const QString& path) {
    const QFileInfo fi(path);
    if (!fi.isFile()) throw RuntimeError::FileNotFound();
    return fi.size();
}

QByteArray FileSystem::ReadBytes(const QString& path, qint64 offset, qint64 n) {
    if (n < 0) throw RuntimeError::InvalidProcedureCall();
    // The import reads every file of a tree this way: one open, and the
    // look-ups that tell the failures apart only when it fails.
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        if (!QFileInfo::exists(path)) throw RuntimeError::FileNotFound();
        throw RuntimeError::PathFileAccessError();
    }
    const qint64 size = file.size();
    if (offset < 0) offset = std::max<qint64>(size + offset, 0);
    if (offset >= size || n == 0) return {};
    if (!file.seek(offset)) throw RuntimeError(57, QStringLiteral("Device I/O error"));
    QByteArray bytes = file.read(n);
    if (bytes.isNull() && file.error() != QFileDevice::NoError) throw RuntimeError(57, QStringLiteral("Device I/O error"));
    return bytes;
}

void FileSystem::FileCopy(const QString& source, const QString& target) {
    if (!QFileInfo(source).isFile()) throw RuntimeError::FileNotFound();
    if (!ReplaceFile(target, [&](const QString& scratch) { return QFile::copy(source, scratch); }))
        throw RuntimeError::PathFileAccessError();
}

bool FileSystem::ReplaceFile(const QString& target, const std::function<bool(const QString& scratch)>& write) {
    if (IsHeldOpen(target)) throw RuntimeError::PermissionDenied();
    const QString scratch = target + QStringLiteral(".zorcopy");
    QFile::remove(scratch);
    try {
        if (!write(scratch)) {
            QFile::remove(scratch);
            return false;
        }
        // On the disk before the rename: a crash after it must not leave
        // the target empty.
        QFile made(scratch);
        if (!made.open(QIODevice::ReadOnly) || ::fsync(made.handle()) != 0) throw RuntimeError::PathFileAccessError();
        made.close();
        Rename(scratch, target);
    } catch (...) {
        QFile::remove(scratch);
        throw;
    }
    return true;
}

void FileSystem::Rename(const QString& from, const QString& to) {
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0) return;
    if (errno == EXDEV) throw RuntimeError(74, QStringLiteral("Can't rename with different drive"));
    if (errno == ENOENT) throw RuntimeError::PathNotFound();
    throw RuntimeError::PathFileAccessError();
}

void FileSystem::Kill(const QString& path) {
    const QFileInfo pat(path);
    QStringList targets;
    if (HasWildcards(pat.fileName())) {
        for (const QString& n : DirList(path)) targets << pat.path() + u'/' + n;
    } else if (QFileInfo(path).isFile()) {
        targets << path;
    }
    if (targets.isEmpty()) throw RuntimeError::FileNotFound();
    for (const QString& t : targets)
        if (IsHeldOpen(t)) throw RuntimeError::PathFileAccessError();
    for (const QString& t : targets)
        if (!QFile::remove(t)) throw RuntimeError::PermissionDenied();
}

void FileSystem::Name(const QString& from, const QString& to) {
    const QFileInfo src(from);
    if (!src.exists()) throw RuntimeError::FileNotFound();
    if (QFileInfo::exists(to)) throw RuntimeError::FileAlreadyExists();
    if (IsHeldOpen(from)) throw RuntimeError::PathFileAccessError();
    Rename(from, to);
}

void FileSystem::MkDir(const QString& path) {
    const QFileInfo fi(path);
    if (fi.exists()) throw RuntimeError::PathFileAccessError();
    if (!QFileInfo(fi.path()).isDir()) throw RuntimeError::PathNotFound();
    if (!QDir().mkdir(path)) throw RuntimeError::PathFileAccessError();
}

int FileSystem::GetAttr(const QString& path) {
    const QFileInfo fi(path);
    if (!fi.exists()) throw RuntimeError::FileNotFound();
    int a = fi.isDir() ? vbDirectory : vbNormal;
    if (!fi.isDir() && !fi.isWritable()) a |= vbReadOnly;
    if (fi.fileName().startsWith(u'.')) a |= vbHidden;
    return a;
}

void FileSystem::SetAttr(const QString& path, int attr) {
    QFile f(path);
    if (!f.exists()) throw RuntimeError::FileNotFound();
    if (IsHeldOpen(path)) throw RuntimeError::PathFileAccessError();
    QFileDevice::Permissions p = f.permissions();
    const auto writeBits = QFileDevice::WriteOwner | QFileDevice::WriteUser;
    if (attr & vbReadOnly) p &= ~(writeBits | QFileDevice::WriteGroup | QFileDevice::WriteOther);
    else p |= writeBits;
    if (!f.setPermissions(p)) throw RuntimeError::PermissionDenied();
}

QString FileSystem::Key(const QString& path) {
    // The file itself, not its name: another name of it (a link, "..", a
    // second hard link) is the same file, as the Windows file system saw it.
    // One stat, where resolving the name took one a path component, and every
    // open of a song comes here.
    struct stat st {};
    if (::stat(QFile::encodeName(path).constData(), &st) == 0)
        return QStringLiteral("%1:%2").arg(quint64(st.st_dev)).arg(quint64(st.st_ino));
    return QFileInfo(path).absoluteFilePath();
}

QString FileSystem::HoldOpen(const QString& path) {
    const QString key = Key(path);
    ++held_[key];
    return key;
}

void FileSystem::Release(const QString& key) {
    auto it = held_.find(key);
    if (it != held_.end() && --it.value() <= 0) held_.erase(it);
}

bool FileSystem::IsHeldOpen(const QString& path) const { return held_.contains(Key(path)); }

}  // namespace zor
