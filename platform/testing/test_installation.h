#pragma once
// A temporary installation for tests and benchmarks: a program directory with
// the installation files (settings, catalogue and masters, word index) and a
// file standing for the program, a home directory for the drive-letter
// defaults, and the test doubles wired to both.
#include "platform/testing/fakes.h"
#include "shell/settings.h"

#include <QTemporaryDir>

#include <array>
#include <vector>

namespace zor::testing {

using SongFields = std::array<QString, 10>;

class TestInstallation {
public:
    TestInstallation();
    TestPlatform tp;
    QString programDir;
    QString home;
    QString File(const QString& name) const { return programDir + u'/' + name; }

    Settings ReadSettings() const;
    void WriteSettings(const Settings& s) const;
    // Reads the settings file, lets `edit` change the record, writes it back.
    template <typename Edit>
    void EditSettings(Edit&& edit) const {
        Settings s = ReadSettings();
        edit(s);
        WriteSettings(s);
    }
    // Appends songs to a catalogue file, numbering field 10 on from the rows
    // already there.
    static void AddSongs(const QString& catalogue, const std::vector<SongFields>& songs);
    // All rows of a catalogue file in table order: the ten text fields and the
    // record number as text.
    static std::vector<std::array<QString, 11>> ReadSongs(const QString& catalogue);

private:
    QTemporaryDir dir_;
};

}  // namespace zor::testing
