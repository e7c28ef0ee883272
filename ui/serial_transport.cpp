#include "ui/serial_transport.h"

#include <QElapsedTimer>
#include <QSerialPortInfo>
#include <QtGlobal>
#include <algorithm>

#include "core/fault.h"

namespace quillet {

SerialTransport::SerialTransport(QObject* parent) : QObject(parent) {
  connect(&port_, &QSerialPort::readyRead, this, &SerialTransport::ReadWaiting);
  connect(&port_, &QSerialPort::errorOccurred, this, &SerialTransport::OnError);
}

std::string SerialTransport::DeviceName(int portNumber) const {
  const QByteArray env = qgetenv(("QUILLET_COM" + std::to_string(portNumber)).c_str());
  if (!env.isEmpty()) return env.toStdString();
#ifdef Q_OS_WIN
  return "COM" + std::to_string(portNumber);
#else
  auto ports = QSerialPortInfo::availablePorts();
  std::stable_sort(ports.begin(), ports.end(), [](const QSerialPortInfo& a, const QSerialPortInfo& b) {
    return a.hasVendorIdentifier() && !b.hasVendorIdentifier();
  });
  if (portNumber < 1 || portNumber > ports.size()) return {};
  return ports[portNumber - 1].systemLocation().toStdString();
#endif
}

void SerialTransport::Open(int portNumber) {
  const std::string device = DeviceName(portNumber);
  if (device.empty()) throw Fault(kFaultDeviceUnavailable, "no serial port number " + std::to_string(portNumber));
  OpenDevice(QString::fromStdString(device));
}

void SerialTransport::OpenDevice(const QString& path) {
  if (port_.isOpen()) port_.close();
  lost_ = false;
  path_ = path;
  port_.setPortName(path);
  if (!port_.open(QIODevice::ReadWrite)) {
    const auto error = port_.error();
    const std::string why = port_.errorString().toStdString();
    port_.clearError();
    if (error == QSerialPort::PermissionError || error == QSerialPort::OpenError) {
      throw Fault(kFaultPermissionDenied, path.toStdString() + ": " + why);
    }
    throw Fault(kFaultDeviceUnavailable, path.toStdString() + ": " + why);
  }
  port_.setFlowControl(QSerialPort::NoFlowControl);
  // Request-to-send is held off; a pseudo-terminal refuses the ioctl, which is harmless.
  port_.setRequestToSend(false);
  port_.clearError();
}

void SerialTransport::Close() {
  lost_ = false;
  if (port_.isOpen()) port_.close();
}

bool SerialTransport::TryReopen() {
  port_.setPortName(path_);
  if (!port_.open(QIODevice::ReadWrite)) {
    port_.clearError();
    return false;
  }
  lost_ = false;
  port_.setFlowControl(QSerialPort::NoFlowControl);
  port_.setRequestToSend(false);
  port_.clearError();
  SetLine(baud_, dataBits_, parity_, stopBits_);
  return true;
}

void SerialTransport::SetLine(int baud, int dataBits, char parity, int stopBits) {
  baud_ = baud;
  dataBits_ = dataBits;
  parity_ = parity;
  stopBits_ = stopBits;
  if (!port_.isOpen()) return;
  port_.setBaudRate(baud);
  port_.setDataBits(static_cast<QSerialPort::DataBits>(dataBits));
  port_.setParity(parity == 'E'   ? QSerialPort::EvenParity
                  : parity == 'O' ? QSerialPort::OddParity
                                  : QSerialPort::NoParity);
  port_.setStopBits(stopBits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
}

void SerialTransport::Write(const std::vector<std::uint8_t>& bytes) {
  if (!port_.isOpen() && !(lost_ && TryReopen())) return;  // a device gone away swallows what is sent
  port_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
  port_.flush();
}

void SerialTransport::Settle(double seconds) {
  QElapsedTimer clock;
  clock.start();
  const qint64 limit = static_cast<qint64>(seconds * 1000);
  while (port_.isOpen() && clock.elapsed() < limit) {
    if (port_.waitForReadyRead(static_cast<int>(limit - clock.elapsed()))) ReadWaiting();
  }
}

void SerialTransport::ReadWaiting() {
  // Kept short: the receive event must be able to run between the acknowledge and the
  // payload that follows 2.3 ms later at 4800 bit/s.
  const QByteArray data = port_.readAll();
  if (!data.isEmpty() && onBytes) onBytes(reinterpret_cast<const std::uint8_t*>(data.constData()), data.size());
}

void SerialTransport::OnError(QSerialPort::SerialPortError error) {
  if (error == QSerialPort::ResourceError && port_.isOpen()) {
    // The device went away while open: close quietly; the watchdog notices the silence.
    port_.close();
    lost_ = true;
    if (onLost) onLost();
  }
}

}  // namespace quillet
