#pragma once
// The one record of all persistent choices, and its file ZORjuke.ini: the
// record written field after field from byte 0, little-endian, no padding.
#include "shell/fixed_text.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>

namespace zor {

struct Settings {
    int16_t SortAtStart = 0;
    FixedText<10> SortAtStartName;
    int16_t SortDirection = 0;
    int16_t ArtistSongSwap = 0;
    int16_t PlayerChoice = 0;
    int16_t AutoLoad = 0;
    int16_t AddAllFileTypes = 0;
    int16_t AddMp3 = 0;
    int16_t AddWma = 0;
    int16_t AddWav = 0;
    int16_t AddExtra1 = 0;
    int16_t AddExtra2 = 0;
    int16_t AddExtra3 = 0;
    int16_t Spare1 = 0;
    FixedText<50> WinampPath;
    FixedText<50> MusicMatchPath;
    FixedText<50> MediaPlayerPath;
    FixedText<50> OtherPlayerPath;
    FixedText<50> Spare2;
    FixedText<50> Spare3;
    int16_t ClearBeforeAdd = 0;
    int16_t FastPc = 0;
    int16_t GridLayoutUser = 0;
    int16_t ShowLyricsAtPlay = 0;
    int16_t ShowPictureAtPlay = 0;
    int16_t RunExecuteAtPlay = 0;
    int16_t ShowFirst = 0;
    int16_t PrintTotalWidth = 0;
    int16_t DirectPlay = 0;
    FixedText<3> ExtraExtension1;
    FixedText<3> ExtraExtension2;
    FixedText<3> ExtraExtension3;
    QString GridFontName;
    QString LyricsFontName;
    QString PrinterFontName;
    double GridFontSize = 0;
    double LyricsFontSize = 0;
    double PrinterFontSize = 0;
    int16_t GridFontBold = 0;
    int16_t LyricsFontBold = 0;
    int16_t PrinterFontBold = 0;
    int16_t GridFontItalic = 0;
    int16_t LyricsFontItalic = 0;
    int16_t PrinterFontItalic = 0;
    int16_t GridFontUnderline = 0;
    int16_t LyricsFontUnderline = 0;
    int16_t PrinterFontUnderline = 0;
    int16_t GridFontStrikeout = 0;
    int16_t LyricsFontStrikeout = 0;
    int16_t PrinterFontStrikeout = 0;
    int32_t GridFontColour = 0;
    int32_t LyricsFontColour = 0;
    int32_t PrinterFontColour = 0;
    std::array<int32_t, 13> GridColumnWidth{};
    int16_t Spare4 = 0;
    std::array<int16_t, 12> PrintColumnOn{};
    int16_t Spare5 = 0;
    std::array<int16_t, 12> PrintColumnWidth{};
    std::array<char, 4> Reserved1{' ', ' ', ' ', ' '};
    std::array<char, 8> Reserved2{' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};
    FixedText<50> AuthorStamp;
    int16_t Language = 0;
    FixedText<50> LyricsPath;
    FixedText<50> PicturesPath;
    FixedText<50> ExecutesPath;
    int16_t IntroSeconds = 0;
    FixedText<50> AlbumCoverPath;
    FixedText<50> AlbumBackPath;
    FixedText<50> ArtistDirsPath;
    int16_t ShowAlbumCover = 0;
    int16_t ShowAlbumBack = 0;
    int16_t AlternatePictures = 0;
    int16_t MaximizePicture = 0;
    int16_t ScrollLyrics = 0;
    int16_t ArtisticScreen = 0;
    int16_t SpeakingDj = 0;
    int16_t MusicCentral = 0;
    int16_t RandomPictures = 0;
    int16_t PictureInterval = 0;
    int16_t LogActivity = 0;
    int16_t Reserved3 = 0;
    std::array<int16_t, 7> TagEditorChecks{};
    std::array<char, 4> Spare6{};
    struct PrintColour {
        int16_t Red = 0, Green = 0, Blue = 0, Spare = 0;
    };
    std::array<PrintColour, 12> PrintColours{};
    int16_t PrintInColour = 0;
    int16_t DjStartMusicWhileSpeaking = 0;
    int16_t DjSpeed = 0;
    int16_t DjPitch = 0;
    int16_t DjSpeakArtist = 0;
    int16_t DjSpeakSong = 0;
    int16_t DjSpeakAlbum = 0;
    int16_t DjSpeakYear = 0;
    int16_t DjSpeakRandom = 0;
    int16_t FinderChoice = 0;
    int16_t Spare7 = 0;
    int16_t DjVoice = 0;
    std::array<int32_t, 13> PlaylistColumnWidth{};
};

// The record as bytes: 1107 + the three font-name lengths + 6 length words.
QByteArray EncodeSettings(const Settings& s);
// Reads the record from the start of `bytes`, field by field. Where the bytes
// end, the read stops and the fields not reached keep their values. Returns
// true when the whole record was there.
bool DecodeSettings(const QByteArray& bytes, Settings& s);

// The defaults a fresh installation starts with (the record when the settings
// file is missing at start-up). Default paths name a drive ("C:\Lyrics") and
// stay so in the record; they are mapped where they are used.
void ApplyFirstUseDefaults(Settings& s);
// What the general settings screen's defaults button sets.
void ApplyCommand2Defaults(Settings& s);

// A record can hold values the program can't use: a sort column past the
// last, a direction or language flag that is neither, a font size of 0, NaN
// or 1e300, a negative or immense column width, a colour with the system-
// colour bit. Start-up takes each as the nearest value that works (an empty
// font name or a size that is no number as the first-use default); what is
// already usable stays as it is.
void MakeSettingsUsable(Settings& s);
// The bounds used: font sizes in points, column widths in twips (a column
// never wider than any screen).
inline constexpr double kSmallestFontSize = 4;
inline constexpr double kLargestFontSize = 72;
inline constexpr int32_t kWidestColumn = 30000;

// The fixed line every full save writes into AuthorStamp (89 characters; the
// field keeps 50).
QString AuthorStampText();

}  // namespace zor
