#include "shell/settings.h"

#include "platform/cp1252.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace zor {
namespace {

// Walks the record's fields in file order; the same walk reads and writes, so
// the layout is written down once.
template <typename IO, typename S>
void Walk(IO& io, S& s) {
    io.Num(s.SortAtStart);
    io.Text(s.SortAtStartName);
    io.Num(s.SortDirection);
    io.Num(s.ArtistSongSwap);
    io.Num(s.PlayerChoice);
    io.Num(s.AutoLoad);
    io.Num(s.AddAllFileTypes);
    io.Num(s.AddMp3);
    io.Num(s.AddWma);
    io.Num(s.AddWav);
    io.Num(s.AddExtra1);
    io.Num(s.AddExtra2);
    io.Num(s.AddExtra3);
    io.Num(s.Spare1);
    io.Text(s.WinampPath);
    io.Text(s.MusicMatchPath);
    io.Text(s.MediaPlayerPath);
    io.Text(s.OtherPlayerPath);
    io.Text(s.Spare2);
    io.Text(s.Spare3);
    io.Num(s.ClearBeforeAdd);
    io.Num(s.FastPc);
    io.Num(s.GridLayoutUser);
    io.Num(s.ShowLyricsAtPlay);
    io.Num(s.ShowPictureAtPlay);
    io.Num(s.RunExecuteAtPlay);
    io.Num(s.ShowFirst);
    io.Num(s.PrintTotalWidth);
    io.Num(s.DirectPlay);
    io.Text(s.ExtraExtension1);
    io.Text(s.ExtraExtension2);
    io.Text(s.ExtraExtension3);
    io.String(s.GridFontName);
    io.String(s.LyricsFontName);
    io.String(s.PrinterFontName);
    io.Num(s.GridFontSize);
    io.Num(s.LyricsFontSize);
    io.Num(s.PrinterFontSize);
    io.Num(s.GridFontBold);
    io.Num(s.LyricsFontBold);
    io.Num(s.PrinterFontBold);
    io.Num(s.GridFontItalic);
    io.Num(s.LyricsFontItalic);
    io.Num(s.PrinterFontItalic);
    io.Num(s.GridFontUnderline);
    io.Num(s.LyricsFontUnderline);
    io.Num(s.PrinterFontUnderline);
    io.Num(s.GridFontStrikeout);
    io.Num(s.LyricsFontStrikeout);
    io.Num(s.PrinterFontStrikeout);
    io.Num(s.GridFontColour);
    io.Num(s.LyricsFontColour);
    io.Num(s.PrinterFontColour);
    for (auto& w : s.GridColumnWidth) io.Num(w);
    io.Num(s.Spare4);
    for (auto& v : s.PrintColumnOn) io.Num(v);
    io.Num(s.Spare5);
    for (auto& v : s.PrintColumnWidth) io.Num(v);
    io.Bytes(s.Reserved1);
    io.Bytes(s.Reserved2);
    io.Text(s.AuthorStamp);
    io.Num(s.Language);
    io.Text(s.LyricsPath);
    io.Text(s.PicturesPath);
    io.Text(s.ExecutesPath);
    io.Num(s.IntroSeconds);
    io.Text(s.AlbumCoverPath);
    io.Text(s.AlbumBackPath);
    io.Text(s.ArtistDirsPath);
    io.Num(s.ShowAlbumCover);
    io.Num(s.ShowAlbumBack);
    io.Num(s.AlternatePictures);
    io.Num(s.MaximizePicture);
    io.Num(s.ScrollLyrics);
    io.Num(s.ArtisticScreen);
    io.Num(s.SpeakingDj);
    io.Num(s.MusicCentral);
    io.Num(s.RandomPictures);
    io.Num(s.PictureInterval);
    io.Num(s.LogActivity);
    io.Num(s.Reserved3);
    for (auto& v : s.TagEditorChecks) io.Num(v);
    io.Bytes(s.Spare6);
    for (auto& c : s.PrintColours) {
        io.Num(c.Red);
        io.Num(c.Green);
        io.Num(c.Blue);
        io.Num(c.Spare);
    }
    io.Num(s.PrintInColour);
    io.Num(s.DjStartMusicWhileSpeaking);
    io.Num(s.DjSpeed);
    io.Num(s.DjPitch);
    io.Num(s.DjSpeakArtist);
    io.Num(s.DjSpeakSong);
    io.Num(s.DjSpeakAlbum);
    io.Num(s.DjSpeakYear);
    io.Num(s.DjSpeakRandom);
    io.Num(s.FinderChoice);
    io.Num(s.Spare7);
    io.Num(s.DjVoice);
    for (auto& w : s.PlaylistColumnWidth) io.Num(w);
}

class Writer {
public:
    QByteArray out;
    template <typename T>
    void Num(const T& v) {
        char b[sizeof(T)];
        qToLittleEndian(v, b);
        out.append(b, sizeof(T));
    }
    template <int N>
    void Text(const FixedText<N>& t) { out.append(cp1252::Field(t.Text(), N)); }
    void String(const QString& s) {
        const QByteArray bytes = cp1252::Encode(s.left(0xFFFF));
        Num(static_cast<uint16_t>(bytes.size()));
        out.append(bytes);
    }
    template <size_t N>
    void Bytes(const std::array<char, N>& a) { out.append(a.data(), N); }
};

// Reads until the bytes run out; from then on every field keeps its value.
class Reader {
public:
    explicit Reader(const QByteArray& in) : in_(in) {}
    bool complete = true;
    template <typename T>
    void Num(T& v) {
        if (const char* p = Take(sizeof(T))) v = qFromLittleEndian<T>(p);
    }
    template <int N>
    void Text(FixedText<N>& t) {
        if (const char* p = Take(N)) t = cp1252::Decode(QByteArray(p, N));
    }
    void String(QString& s) {
        uint16_t len = 0;
        const char* p = Take(2);
        if (!p) return;
        len = qFromLittleEndian<uint16_t>(p);
        if (const char* q = Take(len)) s = cp1252::Decode(QByteArray(q, len));
    }
    template <size_t N>
    void Bytes(std::array<char, N>& a) {
        if (const char* p = Take(N)) std::memcpy(a.data(), p, N);
    }

private:
    const char* Take(qsizetype n) {
        if (!complete || in_.size() - pos_ < n) {
            complete = false;
            return nullptr;
        }
        const char* p = in_.constData() + pos_;
        pos_ += n;
        return p;
    }
    const QByteArray& in_;
    qsizetype pos_ = 0;
};

}  // namespace

QByteArray EncodeSettings(const Settings& s) {
    Writer w;
    Walk(w, s);
    return w.out;
}

bool DecodeSettings(const QByteArray& bytes, Settings& s) {
    Reader r(bytes);
    Walk(r, s);
    return r.complete;
}

namespace {

// What the installation's defaults and the settings screen's default button
// agree on; the two then differ in a handful of fields each.
void ApplySharedDefaults(Settings& s) {
    // Default paths are kept as the old program wrote them, so the record is
    // the same bytes; their users map them to this machine (MapWindowsPath).
    s.SortAtStart = 1;
    s.SortAtStartName = QStringLiteral("Song");
    s.SortDirection = 1;
    s.AutoLoad = 1;
    s.AddAllFileTypes = 1;
    s.AddMp3 = 1;
    s.AddWma = 1;
    s.AddWav = 1;
    s.AddExtra1 = 0;
    s.AddExtra2 = 0;
    s.AddExtra3 = 0;
    s.WinampPath = QStringLiteral("D:\\Winamp\\Winamp.exe");
    s.MusicMatchPath = QStringLiteral("C:\\Program Files\\MusicMatch Jukebox 3\\MMJB.exe");
    s.OtherPlayerPath = QStringLiteral("C:\\Audio\\Winamp.exe");
    s.ClearBeforeAdd = 0;
    s.ShowLyricsAtPlay = 1;
    s.ShowPictureAtPlay = 1;
    s.RunExecuteAtPlay = 0;
    s.DirectPlay = 1;
    s.Language = 1;
    s.LyricsPath = QStringLiteral("C:\\Lyrics");
    s.ExecutesPath = QStringLiteral("C:\\Executes");
}

}  // namespace

void ApplyFirstUseDefaults(Settings& s) {
    ApplySharedDefaults(s);
    s.ArtistSongSwap = 1;
    s.PlayerChoice = 0;
    s.MediaPlayerPath = QStringLiteral("C:\\Audio\\Winamp.exe");
    s.Spare2 = QString();
    s.FastPc = 0;
    s.GridLayoutUser = 1;
    s.PrintTotalWidth = 78;
    s.GridFontName = s.LyricsFontName = s.PrinterFontName = QStringLiteral("Arial");
    s.GridFontSize = 10;
    s.LyricsFontSize = 10;
    s.PrinterFontSize = 8;
    s.GridFontBold = -1;
    s.LyricsFontBold = -1;
    s.PrinterFontBold = 0;
    s.GridFontItalic = s.LyricsFontItalic = s.PrinterFontItalic = 0;
    s.GridFontUnderline = s.LyricsFontUnderline = s.PrinterFontUnderline = 0;
    s.GridFontStrikeout = s.LyricsFontStrikeout = s.PrinterFontStrikeout = 0;
    s.GridFontColour = 0x000000;
    s.LyricsFontColour = 0x00FFFF;  // yellow, as 0x00BBGGRR
    s.PrinterFontColour = 0xFFFFFF;
    s.GridColumnWidth.fill(0);
    s.PrintColumnOn = {1, 1, 0, 1, 1, 0, 0, 0, 0, 0, 1, 0};
    s.PrintColumnWidth = {32, 25, 30, 5, 12, 50, 4, 40, 40, 40, 4, 0};
    s.PicturesPath = QStringLiteral("C:\\Pictures");
    s.Reserved3 = 1;
}

void ApplyCommand2Defaults(Settings& s) {
    ApplySharedDefaults(s);
    s.ArtistSongSwap = 0;
    s.PlayerChoice = 4;
    s.MediaPlayerPath = QStringLiteral("C:\\Windows\\Mplayer.exe");
    s.FastPc = 1;
    s.GridLayoutUser = 0;
    s.ShowFirst = 0;
    s.PicturesPath = QStringLiteral("C:\\Artists");
    s.IntroSeconds = 10;
    s.ShowAlbumCover = 0;
    s.ShowAlbumBack = 0;
    s.AlternatePictures = 1;
    s.MaximizePicture = 0;
    s.ScrollLyrics = 1;
    s.SpeakingDj = 0;
}

void MakeSettingsUsable(Settings& s) {
    const auto fit = [](auto& v, int low, int high) {
        v = static_cast<std::remove_reference_t<decltype(v)>>(std::clamp<int>(v, low, high));
    };
    fit(s.SortAtStart, 0, 12);
    fit(s.SortDirection, 1, 2);
    fit(s.PlayerChoice, 0, 4);
    fit(s.Language, 0, 1);
    fit(s.ArtisticScreen, 0, 1);
    for (auto* widths : {&s.GridColumnWidth, &s.PlaylistColumnWidth})
        for (int32_t& w : *widths) fit(w, 0, kWidestColumn);
    const auto size = [](double& points, double otherwise) {
        points = std::isnan(points) ? otherwise : std::clamp(points, kSmallestFontSize, kLargestFontSize);
    };
    size(s.GridFontSize, 10);
    size(s.LyricsFontSize, 10);
    size(s.PrinterFontSize, 8);
    for (QString* name : {&s.GridFontName, &s.LyricsFontName, &s.PrinterFontName})
        if (name->trimmed().isEmpty()) *name = QStringLiteral("Arial");
    for (int32_t* colour : {&s.GridFontColour, &s.LyricsFontColour, &s.PrinterFontColour}) *colour &= 0x00FFFFFF;
}

QString AuthorStampText() {
    return QStringLiteral("####2001;@ Copyright ZOR electronics, Linux port, Postbus 17, 1000 AA Amsterdam NL. ~~~~~");
}

}  // namespace zor
