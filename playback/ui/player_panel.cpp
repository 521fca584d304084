#include "playback/ui/player_panel.h"

#include "playback/ui/play_ops.h"
#include "platform/guard.h"
#include "shell/ui/form1.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QStyle>
#include <QToolButton>

namespace zor {
namespace {

// A seam that knows its window, so a window going away clears only its own.
struct PlayerSeam {
    Form1* owner;
    void (*operation)(Form1&);
    void operator()() const { operation(*owner); }
};

void ClearSeam(std::function<void()>& seam, const Form1* owner) {
    if (const PlayerSeam* s = seam.target<PlayerSeam>(); s && s->owner == owner) seam = nullptr;
}

QToolButton* PlayerButton(Form1& f, const char* name, QStyle::StandardPixmap icon, const QString& tip) {
    auto* b = new QToolButton(f.Frame8);
    b->setObjectName(QString::fromLatin1(name));
    b->setIcon(f.style()->standardIcon(icon));
    b->setToolTip(tip);
    return b;
}

void BuildControls(Form1& f) {
    MediaPlayer& player = *f.MediaPlayer1;
    auto* row = new QHBoxLayout(f.Frame8);
    row->setContentsMargins(4, 2, 4, 2);
    row->setSpacing(2);
    QToolButton* play = PlayerButton(f, "PlayerPlay", QStyle::SP_MediaPlay, QStringLiteral("Play"));
    QToolButton* pause = PlayerButton(f, "PlayerPause", QStyle::SP_MediaPause, QStringLiteral("Pause"));
    QToolButton* stop = PlayerButton(f, "PlayerStop", QStyle::SP_MediaStop, QStringLiteral("Stop"));
    QObject::connect(play, &QToolButton::clicked, &f, [&player] { player.Play(); });
    QObject::connect(pause, &QToolButton::clicked, &f, [&player] { player.Pause(); });
    QObject::connect(stop, &QToolButton::clicked, &f, [&player] { player.Stop(); });
    auto* label = new QLabel(QStringLiteral("Volume:"), f.Frame8);
    label->setObjectName(QStringLiteral("Label6"));
    // Hundredths of a decibel; below -40 dB is as good as silent.
    auto* volume = new QSlider(Qt::Horizontal, f.Frame8);
    volume->setObjectName(QStringLiteral("Volume"));
    volume->setRange(-4000, 0);
    volume->setValue(std::max(player.Volume(), -4000));
    volume->setFixedWidth(90);
    QObject::connect(volume, &QSlider::valueChanged, &f, [&player](int v) { player.SetVolume(v <= -4000 ? -10000 : v); });
    for (QWidget* w : {static_cast<QWidget*>(play), static_cast<QWidget*>(pause), static_cast<QWidget*>(stop),
                       static_cast<QWidget*>(label), static_cast<QWidget*>(volume)})
        row->addWidget(w);
    f.Frame8->adjustSize();
}

}  // namespace

void AttachMediaPlayer(Form1& f) {
    f.MediaPlayer1 = f.j.platform.players.MakePlayer();
    f.MediaPlayer1->PlayStateChange = [form = &f](int, int newState) {
        Guarded(form->j.platform.messages, [&] { PlayerStateChanged(*form, newState); }, form->j.HidePictureForms);
    };
    f.j.StopPlayer = PlayerSeam{&f, [](Form1& form) { form.MediaPlayer1->Stop(); }};
    f.j.FreeSongFromPlayer = PlayerSeam{&f, [](Form1& form) {
                                            form.MediaPlayer1->Stop();
                                            form.MediaPlayer1->Open(form.j.ProgramFile(QStringLiteral("ZOR3.mp3")));
                                        }};
    BuildControls(f);
}

void DetachMediaPlayer(Form1& f) {
    ClearSeam(f.j.StopPlayer, &f);
    ClearSeam(f.j.FreeSongFromPlayer, &f);
    if (f.MediaPlayer1) f.MediaPlayer1->PlayStateChange = nullptr;
}

}  // namespace zor
