#pragma once
// Byte transport over QSerialPort. Port numbers 1..4 map to devices: the environment
// variable QUILLET_COMn names a device path where it is set; otherwise "COMn" on Windows
// and elsewhere the n-th serial port the system lists, USB adapters first.
#include <QObject>
#include <QSerialPort>

#include "core/platform.h"

namespace quillet {

class SerialTransport : public QObject, public ByteTransport {
  Q_OBJECT
 public:
  explicit SerialTransport(QObject* parent = nullptr);
  void Open(int portNumber) override;
  void Close() override;
  bool IsOpen() const override { return port_.isOpen() || lost_; }
  void SetLine(int baud, int dataBits, char parity, int stopBits) override;
  void Write(const std::vector<std::uint8_t>& bytes) override;
  void Settle(double seconds) override;
  std::string DeviceName(int portNumber) const override;

  // Opens a device by its path (the command-line tool's --port).
  void OpenDevice(const QString& path);

 private:
  void ReadWaiting();
  void OnError(QSerialPort::SerialPortError error);
  bool TryReopen();
  QSerialPort port_;
  // A device that went away while open is opened again quietly at the next write, so a
  // logger unplugged and plugged back (or an emulator restarted) is found without help.
  bool lost_ = false;
  QString path_;
  int baud_ = 9600, dataBits_ = 8, stopBits_ = 1;
  char parity_ = 'N';
};

}  // namespace quillet
