#pragma once
// Real audio files made at test time by sox and lame, for tests that need
// what a real encoder writes or a real decoder accepts. Such tests skip when
// either tool is missing.
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

namespace zor::testing {

struct AudioTools {
    QString sox = QStandardPaths::findExecutable(QStringLiteral("sox"));
    QString lame = QStandardPaths::findExecutable(QStringLiteral("lame"));
    bool Usable() const { return !sox.isEmpty() && !lame.isEmpty(); }

    // A 440 Hz tone of `seconds` in the format the path's extension says.
    bool Tone(const QString& path, double seconds, int rate = 44100, int channels = 2) const {
        return QProcess::execute(sox, {"-n", "-r", QString::number(rate), "-c", QString::number(channels), path,
                                       "synth", QString::number(seconds), "sine", "440", "gain", "-6"}) == 0;
    }
    // The tone as lame encodes it with `options`, at the tone's own rate.
    bool Mp3(const QString& path, double seconds, const QStringList& options = {}, int rate = 44100,
             int channels = 2) const {
        const QString wav = path + QStringLiteral(".wav");
        const QStringList args = QStringList{"--quiet", "--resample", QString::number(rate / 1000.0)} + options +
                                 QStringList{wav, path};
        return Tone(wav, seconds, rate, channels) && QProcess::execute(lame, args) == 0;
    }
};

}  // namespace zor::testing
