#pragma once
// The button bar Frame2: the nine picture buttons, the legend of words under
// them, and the change between the catalogue's and the playlist's bar.
//
// The legend is one string with blanks between its words, and the string is
// shown as it is. The buttons follow the words instead: each is centred on
// its word as the legend's font measures it, so words and buttons line up in
// either language and either mode.
#include "shell/ui/button_pictures.h"

#include <QPoint>
#include <QSize>

class QFont;

namespace zor {

class Form1;

// The legend's font: fixed in pixels, as the window's layout is.
QFont ButtonBarLegendFont();

// Gives the nine buttons their pictures; once, after the buttons are built.
void PaintButtonPictures(Form1& f);

// Places Frame2 at topLeft and its buttons under the words of its current
// title, which the bar paints as its legend below the buttons. Returns the
// bar's size; the window puts the grids below it.
QSize LayOutButtonBar(Form1& f, QPoint topLeft);

// The playlist's bar: back, pause and next take the places of add, find and
// edit, with their faces in text.
void ShowPlaylistBar(Form1& f);
// The catalogue's bar again, with its pictures.
void ShowCatalogueBar(Form1& f);

}  // namespace zor
