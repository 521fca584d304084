#pragma once
// The pictograms of the button bar, drawn with the painter rather than kept
// as bitmaps, so they stay sharp at any size and on either skin.
#include <QIcon>

namespace zor {

// The pictograms of the buttons, left to right on the catalogue's bar.
enum class ButtonPicture { Open, Save, Add, Find, Edit, Settings, Playlist, Artist, Exit };

// A pictogram drawn at whatever size and pixel density it is asked for.
QIcon ButtonPictureIcon(ButtonPicture picture);

}  // namespace zor
