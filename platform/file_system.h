#pragma once
// Files as the jukebox sees them: Dir, FileLen, FileCopy, Kill, Name, MkDir,
// GetAttr, SetAttr. Windows refused to delete or rename a file that a program
// held open, and the jukebox relies on that refusal (the open catalogue, the
// player's current song), so this class keeps a registry of the files the
// process holds open and refuses the same operations on them.
#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>

namespace zor {

enum FileAttr : int {
    vbNormal = 0,
    vbReadOnly = 1,
    vbHidden = 2,
    vbSystem = 4,
    vbVolume = 8,
    vbDirectory = 16,
    vbArchive = 32,
};

class FileSystem {
public:
    virtual ~FileSystem() = default;

    // The names (no path) of the entries matching `pattern` ("dir/name",
    // "dir/*.mp3"), sorted without regard to case; "." and ".." never come.
    // With vbDirectory in attr, directories come as well as files. A name
    // without * or ? is an exact look-up, as case-sensitive as the disk.
    virtual QStringList DirList(const QString& pattern, int attr = vbNormal);
    // VB's Dir: the first match or "", then DirNext() for the following ones.
    QString Dir(const QString& pattern, int attr = vbNormal);
    QString DirNext();

    // The subdirectories of `dir`, named and sorted as DirList names and
    // sorts; hidden ones and links that lead nowhere never come.
    virtual QStringList Subdirectories(const QString& dir);
    // The files of `dir` that match any of the file list's patterns
    // ("*.mp3;*.wma"; "*.*" and "" mean every file), named and sorted as
    // DirList names and sorts.
    QStringList FilesMatching(const QString& dir, const QString& patterns);

    virtual bool FileExists(const QString& path);
    virtual bool DirExists(const QString& path);
    virtual qint64 FileLen(const QString& path);
    // Up to n bytes of a file from the 0-based offset, fewer at its end; a
    // negative offset counts from the end, so (-128, 128) is the last 128
    // bytes, or the whole of a shorter file. The file is open only for the
    // read and takes no hold. Error 53 when there is no such file, 75 when
    // it can't be opened, 57 when the read fails.
    virtual QByteArray ReadBytes(const QString& path, qint64 offset, qint64 n);
    virtual void FileCopy(const QString& source, const QString& target);
    // Replaces `target` by the file that `write` makes at the scratch path
    // it is given. The scratch lies beside the target, so the rename that
    // puts it in place never crosses file systems and the target is at every
    // moment either the old file, whole, or the new one, complete. When
    // `write` returns false or throws, the scratch goes and the target stays
    // as it was; so it does when the rename fails. A target the process
    // holds open is refused with error 70, as FileCopy refuses it.
    // Returns what `write` returned.
    bool ReplaceFile(const QString& target, const std::function<bool(const QString& scratch)>& write);
    virtual void Kill(const QString& path);
    virtual void Name(const QString& from, const QString& to);
    virtual void MkDir(const QString& path);
    virtual int GetAttr(const QString& path);
    virtual void SetAttr(const QString& path, int attr);

    // The registry of files the process holds open. HoldOpen returns the key
    // to give back to Release, which stays valid when the file is gone.
    QString HoldOpen(const QString& path);
    void Release(const QString& key);
    bool IsHeldOpen(const QString& path) const;

protected:
    // rename(2), with its failures as the runtime's errors.
    virtual void Rename(const QString& from, const QString& to);

private:
    static QString Key(const QString& path);
    QHash<QString, int> held_;
    QStringList pending_;
};

// Holds a file open in the registry for as long as it lives.
class FileHold {
public:
    FileHold() = default;
    FileHold(FileSystem& fs, const QString& path) : fs_(&fs), key_(fs.HoldOpen(path)) {}
    FileHold(FileHold&& o) noexcept : fs_(o.fs_), key_(std::move(o.key_)) { o.fs_ = nullptr; }
    FileHold& operator=(FileHold&& o) noexcept {
        if (this != &o) {
            Reset();
            fs_ = o.fs_;
            key_ = std::move(o.key_);
            o.fs_ = nullptr;
        }
        return *this;
    }
    ~FileHold() { Reset(); }
    void Reset() {
        if (fs_) fs_->Release(key_);
        fs_ = nullptr;
    }

private:
    FileSystem* fs_ = nullptr;
    QString key_;
};

}  // namespace zor
