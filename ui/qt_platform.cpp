#include "ui/qt_platform.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QMetaObject>

namespace quillet {

DateTime QtClock::Now() const {
  const QDateTime now = QDateTime::currentDateTime();
  const QDate d = now.date();
  const QTime t = now.time();
  return MakeDateTime(DateParts{d.year(), d.month(), d.day(), t.hour(), t.minute(), t.second()}) +
         t.msec() / 86400000.0;
}

void QtTimers::StartTimer(const std::string& name, int intervalMs, std::function<void()> action) {
  auto* timer = new QTimer(this);
  timer->setObjectName(QString::fromStdString(name));
  timer->setTimerType(Qt::PreciseTimer);
  connect(timer, &QTimer::timeout, this, [action = std::move(action)] { action(); });
  timer->start(intervalMs);
}

void QtPoster::Post(std::function<void()> work) {
  QMetaObject::invokeMethod(QCoreApplication::instance(), [work = std::move(work)] { work(); }, Qt::QueuedConnection);
}

}  // namespace quillet
