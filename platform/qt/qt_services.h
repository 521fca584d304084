#pragma once
// The real services that need the window system.
#include "platform/services.h"

namespace zor {

class QtMessageBoxes : public MessageBoxes {
public:
    int MsgBox(const QString& prompt, int flags, const QString& title) override;
};

class QtCommonDialog : public CommonDialog {
public:
    void ShowOpen() override;
    void ShowSave() override;
};

class QtBeeper : public Beeper {
public:
    void Beep() override;
};

class QtProcessControl : public ProcessControl {
public:
    void End() override;
    bool Ended() const override { return ended_; }

private:
    bool ended_ = false;
};

class QtDesktop : public Desktop {
public:
    bool Open(const QString& documentOrUrl) override;
};

// "desc|*.mdb|All Files (*.*)|*.*" as a Qt file dialog filter.
QString QtFilterFromVb(const QString& vbFilter);

}  // namespace zor
