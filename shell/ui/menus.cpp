#include "shell/ui/menus.h"

#include "catalogue/ui/catalogue_ops.h"
#include "catalogue/ui/grid_ops.h"
#include "catalogue/ui/import_ops.h"
#include "mp3/ui/form10.h"
#include "mp3/ui/header_repair_ops.h"
#include "mp3/ui/form9.h"
#include "mp3/ui/tag_editor_ops.h"
#include "playback/ui/form24.h"
#include "playback/ui/lyrics_ops.h"
#include "playback/ui/play_ops.h"
#include "playlists/ui/playlist_files.h"
#include "playlists/ui/playlist_mode.h"
#include "shell/ui/form1.h"
#include "shell/ui/help_ops.h"
#include "shell/ui/path_selector.h"
#include "shell/ui/startup.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace zor {
namespace {

// The main window's menus, left to right and top to bottom. An entry whose
// work is not in this build has no operation and shows disabled.
// clang-format off
const MenuEntry kMenus[] = {
    {MenuEntry::Menu, "File", "&File", "&Bestand", nullptr},
    {MenuEntry::Entry, "Nieuw", "&New", "&Nieuw", NewCatalogue},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Open1", "&Open Database", "&Open Database", OpenDatabaseDialog},
    {MenuEntry::Entry, "Save1", "&Save Database", "&Bewaar Database", SaveDatabase},
    {MenuEntry::Entry, "Save2", "Save Database &As", "Be&waar Database Als", SaveDatabaseAs},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Open2", "Open &Playlist", "Open &Playlist", OpenPlaylistAndPlay},
    {MenuEntry::Entry, "Save3", "Save P&laylist", "Bewaar P&laylist", SaveDefaultPlaylist},
    {MenuEntry::Entry, "Save4", "Save Pla&ylist As", "Bewaar Pla&ylist Als", SavePlaylistAs},
    {MenuEntry::Entry, "Save5", "Save Playlist in M3U format", nullptr, SavePlaylistM3u},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Slog1", "Show &LOG file", "Toon &LOG bestand", ShowLogFile},
    {MenuEntry::Entry, "SStat1", "Show Statistics", nullptr, nullptr},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Exit1", "E&xit", nullptr, [](Form1& f) { ExitProgram(f, false); }},
    {MenuEntry::Menu, "Edit", "&Edit", "Be&werk", nullptr},
    {MenuEntry::Entry, "Editor1", "&Edit Database entry", "Bewerk Database gegevens", OpenTagEditor},
    {MenuEntry::Entry, "Browse1", "&Browse", "&Blader", Browse},
    {MenuEntry::Entry, "Insert1", "&Insert", "&Invoegen", InsertChosenPath},
    {MenuEntry::Entry, "Copy1", "&Copy selected songs", "Copieer geselecteerde songs", nullptr},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Find2", "Find any Song (!)", nullptr, nullptr},
    {MenuEntry::Entry, "Find1", "&Find Text", "&Zoek tekst", nullptr},
    {MenuEntry::Entry, "Double1", "Find &Double Records", "Zoek &dubbele regels", nullptr},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "DelRec1", "&Delete this Record only", "Ver&wijder alleen deze regel", DeleteRecord},
    {MenuEntry::Entry, "DelRec2", "Delete &All selected Records", "Verwijder &alle geselecteerde regels", DeleteSelectedRecords},
    {MenuEntry::Entry, "DelFile1", "Delete this Mp3 file (be careful!!)", "Verwijder dit Mp3 bestand van uw PC", DeleteSongFile},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Mark1", "&Number selected records", "Mar&keer geselecteerde regels", NumberSelectedRows},
    {MenuEntry::Entry, "CleSel1", "&Clear selection numbers", "Wis selectie", ClearSelectionNumbers},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "RemHead", "&Remove non-standard mp3-header", "Verwijder niet-standaard header uit MP3-bestand", RemoveLeadInFromMenu},
    {MenuEntry::Entry, "Short1", "S&horten beginning or end of mp3 file", "In&korten van begin of eind van MP3-bestand", ShowTrimWindow},
    {MenuEntry::Menu, "Action", "&Action", "&Actie", nullptr},
    {MenuEntry::Entry, "ClearFill", "&Clear and Add songs", "&Wis en voeg song(s) toe", ClearFill},
    {MenuEntry::Entry, "AddSongs", "&Add All Songs ", "&Voeg alle songs toe", AddSongs},
    {MenuEntry::Entry, "AddOne", "Add &one Song", "Voeg &een song toe", AddOne},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Clear1", "C&lear database", "Wis gehele &Database", ClearDatabaseMenu},
    {MenuEntry::Entry, "Compact1", "C&ompact database", "&Compact de Database", CompactDatabase},
    {MenuEntry::Entry, "Refresh1", "&Refresh database", "Vernieuw de Database", RefreshDatabase},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Sorter1", "&Sort Selection A -> Z", "Sorteer selectie, &A -> Z", [](Form1& f) { SortSelection(f, 1); }},
    {MenuEntry::Entry, "Sorter2", "Sort Selection &Z -> A", "Sorteer selectie, &Z -> A", [](Form1& f) { SortSelection(f, 2); }},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Sorter3", "Sort &by Artist and Song", "&Sorteer op Artiest en Song!", [](Form1& f) { DoubleSort(f, 2); }},
    {MenuEntry::Entry, "Sorter4", "Sort &by Albu&m and Song", "Sorteer op Albu&m en Song!", [](Form1& f) { DoubleSort(f, 3); }},
    {MenuEntry::Entry, "Sorter5", "Sort by St&yle and Song", "Sorteer op &Stijl en Song!", [](Form1& f) { DoubleSort(f, 5); }},
    {MenuEntry::Entry, "Sorter6", "Sort by &Year and Song", "Sorteer op &Jaar en Song!", [](Form1& f) { DoubleSort(f, 4); }},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Mover1", "Move songs to &Artist Directories", "Verplaats Songs naar &Artiesten-dir's", nullptr},
    {MenuEntry::Entry, "Mover4", "Move songs to A\\,B\\,C\\ to Z\\ Artist Directories", "&Verplaats Songs A\\,B\\,C\\ t/m Z\\ en Artiesten-dir's", nullptr},
    {MenuEntry::Entry, "Mover2", "Move songs to &Year Directories", "Verplaats Songs naar &Jaartal-dir's", nullptr},
    {MenuEntry::Entry, "Mover3", "&Rename to A\\,B\\,C\\ to Z\\ Artist Directories", "Her-naam in A\\,B\\,C\\ t/m Z\\ Artiesten &Dir's", nullptr},
    {MenuEntry::Entry, "Copie1", "&Copy All Songs to Default Directory", "Copieer Alle Songs naar Default Directory", nullptr},
    {MenuEntry::Entry, "Make1", "Make Alphabetical &directories", "Maak A\\,B\\,C\\ t/m Z\\ Directories", nullptr},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Tlist1", "Make &textfile with list of songs", "Maak tekstbestand met song-lijst", nullptr},
    {MenuEntry::Entry, "Clist1", "Create Car-player data files", "Creeer Carplayer bestanden", nullptr},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Ascreen", "Change to Artistic Screen-layout", "Verander in Artistieke scherm", [](Form1& f) { ChangeSkin(f, true); }},
    {MenuEntry::Menu, "Settings", "&Settings", "In&stelling", nullptr},
    {MenuEntry::Entry, "Sett1", "General setting", "Algemene Instellingen", nullptr},
    {MenuEntry::Entry, "Sett2", "Path settings", "Pad Instellingen", nullptr},
    {MenuEntry::Entry, "Sett4", "Speaking DJ", "Sprekende D.J. instellingen", nullptr},
    {MenuEntry::Entry, "Sett3", "SAVE all settings", "BEWAAR Instellingen", SaveAllSettingsFromForm},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Free1", "Use Freespeech", "Gebruik Freespeech", nullptr},
    {MenuEntry::Menu, "Playlist", "P&laylist", "P&laylist", nullptr},
    {MenuEntry::Entry, "Playlist1", "&Show and Start the Playlist", "Toon en Start de &Playlist", ShowAndStartPlaylist},
    {MenuEntry::Entry, "Playlist2", "S&how the Playlist", "&Toon de Playlist", ShowPlaylistOnly},
    {MenuEntry::Entry, "Playlist3", "&Clear the Playlist", "&Wis de Playlist", ClearPlaylist},
    {MenuEntry::Entry, "Playlist4", "&Back to the Database", "&Terug naar de Database", BackToDatabase},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Random1", "Select at &Random", "Kies &willekeurige songs", nullptr},
    {MenuEntry::Entry, "Random2", "Select at Random according to &Mood", "&Kies willekeurige songs naar gelang stemming", nullptr},
    {MenuEntry::Entry, "Random3", "Select &non-Random according to Mood", "&Selecteer songs naar gelang stemming", nullptr},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "SelArt1", "Select all Songs by &this Artist", "Selecteer alle songs van deze &Artiest", SelectAllByArtist},
    {MenuEntry::Entry, "SelAlb1", "Select all Songs on this Alb&um", "Selecteer alle songs van dit Alb&um", SelectAllByAlbum},
    {MenuEntry::Entry, "SelTit1", "Select all Songs with same &Title", "Selecteer alle songs met zelfde &Titel", SelectAllByTitle},
    {MenuEntry::Entry, "SelYear", "Select all Songs from this &Year", "Selecteer alle songs van dit &Jaar", SelectAllByYear},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "DJMixer", "DJ - Mixer!", nullptr, nullptr},
    {MenuEntry::Entry, "Intro1", "Play &Intro('s) only", "Speel alleen &Intro's", PlayIntrosOnly},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Halt1", "Stop Play", nullptr, StopPlay},
    {MenuEntry::Menu, "Print0", "&Print", "&Print", nullptr},
    {MenuEntry::Entry, "Print1", "&Print All Records", "Print &Alle regels", nullptr},
    {MenuEntry::Entry, "Print2", "Print Selected &Records", "Print &geselecteerde regels", nullptr},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Print3", "Printer &Setup", "Printer &Instelling", nullptr},
    {MenuEntry::Entry, "Print4", "Printing &Lay-out Setup", "Print &Layout", nullptr},
    {MenuEntry::Entry, "Print5", "Printer &Fonts and Colour", "Printer &Fonts en kleuren", nullptr},
    {MenuEntry::Entry, "Print6", "&Colour printer settings", "&Kleurenprinter instellingen", nullptr},
    {MenuEntry::Menu, "Special00", "Spe&cial", "Spe&ciaal", nullptr},
    {MenuEntry::Entry, "Special0", "&List selected files (and find faulty files)", "&Toon lijst van geselecteerde bestanden", nullptr},
    {MenuEntry::Entry, "Special1", "S&wap Artist and Songtitle in filename(s)", "&Verwissel Artiest en Songtitel in bestandsnamen ", nullptr},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Special2", "&Insert text in filename(s)", "Voeg tekst toe &in/aan bestandsnamen", nullptr},
    {MenuEntry::Entry, "Special3", "&Add text to End of Filename(s)", "Voeg tekst toe aan &einde bestandsnamen", nullptr},
    {MenuEntry::Entry, "Special4", "&Delete text in filename(s)", "Ver&wijder tekst uit bestandsnamen", nullptr},
    {MenuEntry::Entry, "Special5", "&Replace text in filename(s)", "Vervang tekst in &bestandsnamen", nullptr},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Special9", "&Remove all non-standard mp3-headers", "Verwijder alle niet-standaard headers uit MP3-bestanden", nullptr},
    {MenuEntry::Entry, "Special6", "&Change attributes from Read-only to Normal", "&Zet bestandsattributen om van 'Read-only' naar 'Normaal'", nullptr},
    {MenuEntry::Entry, "Special7", "C&onvert filename(s) to Lower case", "&Converteer bestandnamen naar kleine letters", nullptr},
    {MenuEntry::Entry, "Special8", "S&tart all words in filename(s) with Capitals", "&Begin elk woord in bestandnamen met een hoofdletter", nullptr},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Special11", "Show Mp3 encoding kb/s", "Toon de mp3 codering in kb/s", nullptr},
    {MenuEntry::Entry, "Special12", "Show and insert Mp3 encoding kb/s into Database", "Toon de mp3 codering in kb/s en berg op in de database", nullptr},
    {MenuEntry::Menu, "Tag0", "&ID3", "&ID3", nullptr},
    {MenuEntry::Entry, "Tag4", "&Edit/Add ID3-tag(s) ", "&Bewerk/Maak ID3-TAG(s)", nullptr},
    {MenuEntry::Entry, "Tag1", "&Edit/Add single ID3-tag manually", "&Bewerk/Maak een ID3-TAG met de hand", OpenTagEditor},
    {MenuEntry::Entry, "Tag5", "&Make ID3-tag(s) using the File name", "&Maak ID3-TAG's aan m.b.v. de bestandsnamen", nullptr},
    {MenuEntry::Entry, "Tag8", "&Replace contents of ID3 tag(s)", "Vervang de inhoud van ID3 tag(s)", nullptr},
    {MenuEntry::Entry, "Tag6", "Replace ST&YLE in ID3-tag(s)", "&Vervang 'Style' aanduidingen in ID3-TAG(s)", nullptr},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Tag2", "&Mp3 file information", "&Mp3 bestandsinformatie", ShowFileInformation},
    {MenuEntry::Entry, "Tag7", "Insert Album field with &Decade", "Voeg &Decennium in Album-veld in", nullptr},
    {MenuEntry::Menu, "Lyr0", "&Lyrics", nullptr, nullptr},
    {MenuEntry::Entry, "Lyr1", "Show &Lyrics for this song", "&Toon Lyrics voor deze song", ShowLyricsOfSong},
    {MenuEntry::Entry, "Edit2", "&Make New Lyrics Text", "&Maak Lyric Tekst", MakeNewLyrics},
    {MenuEntry::Entry, "Edit3", "&Edit Lyrics text", nullptr, EditLyrics},
    {MenuEntry::Entry, "Lyr6", "Copy Lyrics text to &Clipboard", "Copieer Lyrics tekst naar &Klembord", CopyLyricsToClipboard},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Lyr2", "&Save Lyrics text", "&Bewaar deze Lyrics", SaveLyrics},
    {MenuEntry::Entry, "Lyr3", "Save Lyrics text &As", "&Bewaar deze Lyrics Als", SaveLyricsAs},
    {MenuEntry::Separator, nullptr, nullptr, nullptr, nullptr},
    {MenuEntry::Entry, "Lyr4", "Lyrics check: &Insert 'Y' or 'N' into Database", "Lyrics aanwezig: 'Y' of 'N' naar Database", nullptr},
    {MenuEntry::Entry, "Lyr5", "&List Lyrics for (non)available Songs", "&Maak lijst van niet aanwezige Lyrics", nullptr},
    {MenuEntry::Entry, "Lyr7", "Copy available Lyrics to songs with same title", nullptr, nullptr},
    {MenuEntry::Menu, "Pict0", "&Pictures", "&Plaatjes", nullptr},
    {MenuEntry::Entry, "Pict1", "&Check for available Pictures", "Geef aanwezige &Plaatjes van artiesten aan", nullptr},
    {MenuEntry::Entry, "Pict2", "Picture check: &Insert 'Y' or 'N' into Database", "Plaatjes aanwezig: 'Y' of 'N' naar Database", nullptr},
    {MenuEntry::Entry, "Pict3", "Show Pictures of Selected Artist", "Toon Plaatjes van geselecteerde Artiest", ShowSelectedArtistPicture},
    {MenuEntry::Entry, "Pict4", "Show Pictures by Path name", nullptr, ShowPictureByPathName},
    {MenuEntry::Menu, "Help", "&Help", "&Help", nullptr},
    {MenuEntry::Entry, "About", "&About", "&Over de ZOR JUKEBOX", ShowAbout},
    {MenuEntry::Entry, "User1", "&User Guide", "&Gebruiksaanwijzing", OpenUserGuide},
    {MenuEntry::Entry, "Inspect1", "Ins&pector", "Ins&pecteur", RunInspector},
    {MenuEntry::Entry, "DHelp1", "Di&rect Help", nullptr, ToggleDirectHelp},
    {MenuEntry::Entry, "Servis1", "&ZOR service mode", nullptr, nullptr},
    {MenuEntry::Entry, "Links0", "&Links", nullptr, ShowLinks},
    {MenuEntry::Entry, "Email1", "&E-mail to ZOR electronics", "&Email aan ZOR electronics", ShowEmail},
    {MenuEntry::Menu, "ZOR0", "&ZOR", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR1", "Vul Dir (bv. C:\\!MP3\\) met jaartallen vanuit Ref.database (Refer1.mdb starten!)", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR16", "Idem, zonder artiesten dir's en verplaats gevonden mp3's naar C:\\Hulp1", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR17", "Vul jaartallen vanuit .txt bestanden in C:\\Hulp2", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR2", "Maak Referentie database", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR3", "Maak &Text bestand van eigen data", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR4", "&Vul Ref.database met eigen text bestand", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR5", "Markeer &Dubbele (vooral die met \"?\")", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR6", "Maak \"Artiest1.txt\" met artists", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR7", "Maak L&yrics file van 8-letter sng file", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR12", "Maak Songlist htm files voor 1 artiest", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR13", "Maak Songlist htm files voor ALLE artiesten", nullptr, nullptr},
    {MenuEntry::Entry, "ZOR14", "Maak Songlist Index htm file", nullptr, nullptr},
};
// clang-format on

}  // namespace

std::span<const MenuEntry> MenuTable() { return kMenus; }

void BuildMenuBar(Form1& f) {
    QMenu* menu = nullptr;
    for (const MenuEntry& e : kMenus) {
        if (e.kind == MenuEntry::Menu) {
            menu = f.menuBar()->addMenu(QString::fromUtf8(e.english));
            menu->setObjectName(QString::fromLatin1(e.name));
        } else if (e.kind == MenuEntry::Separator) {
            menu->addSeparator();
        } else {
            QAction* a = menu->addAction(QString::fromUtf8(e.english));
            a->setObjectName(QString::fromLatin1(e.name));
            if (e.operation) QObject::connect(a, &QAction::triggered, &f, [&f, op = e.operation] { f.Run(op); });
            else a->setEnabled(false);
        }
    }
}

void SetMenuCaptions(Form1& f, bool dutch) {
    for (const MenuEntry& e : kMenus) {
        if (e.kind == MenuEntry::Separator) continue;
        const QString text = QString::fromUtf8(dutch && e.dutch ? e.dutch : e.english);
        const QString name = QString::fromLatin1(e.name);
        if (e.kind == MenuEntry::Menu) f.findChild<QMenu*>(name)->setTitle(text);
        else f.findChild<QAction*>(name)->setText(text);
    }
}

}  // namespace zor
