#pragma once
// The real services that need no window.
#include "platform/services.h"

namespace zor {

class SystemClock : public Clock {
public:
    QDateTime Now() override;
    double Timer() override;
};

class QtEventPump : public EventPump {
public:
    void DoEvents() override;
    void Wait(int ms) override;
};

class SystemEnvironment : public Environment {
public:
    QString ApplicationPath() override;
    QString CurrentDirectory() override;
    QString HomeDirectory() override;
    QString WindowsDirectory() override;
    QString SystemDirectory() override;
    QSize ScreenSize() override;
};

}  // namespace zor
