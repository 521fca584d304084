#pragma once
// The tag editor's clean-up rules, which need no window: the case rules,
// the title and artist swap, names from the file name, the decade album,
// the style by year, the score block at the front of the comment, and the
// names the lyrics and picture checks look for. mp3/ui/tag_editor_ops.h
// drives Form11 with them, and the pass over the whole catalogue applies
// them row by row.
//
// Several rules are crude on purpose and the catalogues users have were made
// by them: "the" is capitalised like any word, a "_" at the very end stays,
// "Artist-Title.mp3" without blanks loses the artist's last letter, and a
// name with no "-" takes the path up to the extension as its title. Don't
// "fix" them.
#include <QString>

#include <cstdint>

namespace zor {

class FileSystem;

// The editor's five text fields and its style list, as the window holds them.
struct EditorFields {
    QString Title;    // Text41
    QString Artist;   // Text42
    QString Album;    // Text43
    QString Comment;  // Text44
    QString Year;     // Text45
    int Style = 12;   // List5's index; -1 with nothing chosen
    bool operator==(const EditorFields&) const = default;
};

// The window's own state between events.
struct TagEditorState {
    int16_t EditorStop = 0;       // -1 while a pass over the catalogue must stop
    int16_t SongEdited = 0;       // 1 after a change in a text field or the style
    int32_t AutoSaveTicks = 0;    // Timer1's ticks since the last change
    int16_t AutoCorrectDone = 0;  // the timer's one-shot flags for the loaded song
    int16_t AutoAlbumDone = 0;
    int16_t AutoStyleDone = 0;
};

// One field in lower case with the first letter of each word upper case:
// after a blank or "(" a letter is raised; a "_" becomes a blank and raises
// nothing. One character stays lower case. With `commentBlock` a text that
// starts with "#" keeps its first five characters (the score block) as they
// are and takes only the 25 after them.
QString CapitaliseWord(const QString& text, bool commentBlock = false);
// The title, artist, album and comment by CapitaliseWord; then a comment of
// more than nine characters that starts with "made with" (an encoder's
// signature) is emptied.
void CapitaliseWords(EditorFields& fields);
// Command1 and Command2: the four text fields in lower or upper case.
void LowerCaseFields(EditorFields& fields);
void UpperCaseFields(EditorFields& fields);
// Command4.
void SwapTitleAndArtist(EditorFields& fields);

// The title, and the artist before it, from a path that ends in
// "Artist - Title.ext"; the path is trimmed and must be five characters or
// more. What the name doesn't give is left as it was.
void TakeNamesFromFile(const QString& path, EditorFields& fields);

// The year field as the decade rules read it: Val, rounded half to even.
double EditorYear(const QString& year);
// The decade name of a year, 1910 to 2019; "" outside.
QString DecadeAlbum(double year);
// A placeholder album (shorter than three, or a decade name, "oldies",
// "title", "album") takes the decade of the year; an empty one then "Album".
void AutoAlbum(EditorFields& fields);
// Pop, Other or Unknown before 1970 become Oldies; from 1970 Oldies, Other
// or Unknown become Pop. Other styles stay.
void AutoStyle(EditorFields& fields);

// The style SaveSongEdit stores for a list index: below 1 it is "Other", so
// "Blues" (0) can never be saved from the editor. Users' catalogues rely on
// this, so it stays.
int StyleToSave(int listIndex);

// The five characters at the front of the comment: "#", the score (1 to 10
// as "1" to ":"), the chart position (0 to 100 as the characters from code
// 48, in the tag's code page: 100 is code 148), "A" or "B" for the special
// mark, and a blank.
QString CommentBlock(int score, int reach, bool special);
// The score, chart position and special mark a comment's block holds, each
// kept to its scroll bar's range; false for a comment without a block. The
// window shows them at load, so that moving one scroll bar doesn't put the
// other's stale value into the block.
struct CommentScore {
    int score = 1;
    int reach = 0;
    bool special = false;
};
bool ReadCommentBlock(const QString& comment, CommentScore& out);
// The comment with the block in front: replacing a block that is there,
// else before the comment's first 25 characters.
QString WithCommentBlock(const QString& comment, const QString& block);

// The name the lyrics check looks for: the file name behind the last
// separator or ":", less its last four characters (the extension).
QString LyricsLookupName(const QString& path);
// The lyrics check's letter: "Y" for a file of that name with any extension
// in `dir`, else "D" for the name without blanks and ".sng", else "N".
QString VerifyLyricsLetter(FileSystem& fs, const QString& dir, const QString& path);
// The picture check's letter: "Y" for a file named as the artist with any
// extension in `dir`, else "N".
QString VerifyPictureLetter(FileSystem& fs, const QString& dir, const QString& artist);

}  // namespace zor
