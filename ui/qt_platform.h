#pragma once
// Clock, timers and event posting of the window program.
#include <QObject>
#include <QTimer>
#include <vector>

#include "core/platform.h"

namespace quillet {

class QtClock : public Clock {
 public:
  DateTime Now() const override;
};

class QtTimers : public QObject, public TimerService {
  Q_OBJECT
 public:
  using QObject::QObject;
  void StartTimer(const std::string& name, int intervalMs, std::function<void()> action) override;
};

class QtPoster : public EventPoster {
 public:
  void Post(std::function<void()> work) override;
};

}  // namespace quillet
