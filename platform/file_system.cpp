#include "platform/file_system.h"

#include "platform/runtime_error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>
#include <cstdio>

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
        if (rx.match(entry).hasMatch()) out << entry;
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

void FileSystem::FileCopy(const QString& source, const QString& target) {
    if (!QFileInfo(source).isFile()) throw RuntimeError::FileNotFound();
    if (IsHeldOpen(target)) throw RuntimeError::PermissionDenied();
    // Through a scratch file and a rename, so a failed copy leaves the old target whole.
    const QString scratch = target + QStringLiteral(".zorcopy");
    QFile::remove(scratch);
    if (!QFile::copy(source, scratch)) {
        QFile::remove(scratch);
        throw RuntimeError::PathFileAccessError();
    }
    if (std::rename(QFile::encodeName(scratch).constData(), QFile::encodeName(target).constData()) != 0) {
        QFile::remove(scratch);
        throw RuntimeError::PathFileAccessError();
    }
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
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
        if (errno == EXDEV) throw RuntimeError(74, QStringLiteral("Can't rename with different drive"));
        if (errno == ENOENT) throw RuntimeError::PathNotFound();
        throw RuntimeError::PathFileAccessError();
    }
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
    const QFileInfo fi(path);
    const QString canonical = fi.canonicalFilePath();
    return canonical.isEmpty() ? fi.absoluteFilePath() : canonical;
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
