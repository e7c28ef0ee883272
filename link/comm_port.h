#pragma once
// The serial control's behaviour over a byte transport: a receive buffer of
// InBufferSize bytes, RThreshold, InBufferCount, Input taking everything, Output that
// sends 0x00 unharmed, and a receive event that is posted — never run re-entrantly —
// when the waiting bytes reach the threshold, and again when the threshold is changed
// to a value they already meet.
#include <cstdint>
#include <functional>
#include <string>

#include "core/platform.h"

namespace quillet {

constexpr int kCommEventReceive = 2;
constexpr int kFaultPortNotOpen = 8018;  // "Operation valid only when the port is open"

class CommPort {
 public:
  CommPort(ByteTransport& transport, EventPoster& poster);
  CommPort(const CommPort&) = delete;
  CommPort& operator=(const CommPort&) = delete;

  int CommPortNumber = 1;  // the control's CommPort
  int InputLen = 0;
  int InBufferSize = 1024;
  bool RTSEnable = true;

  bool PortOpen() const { return open_; }
  void SetPortOpen(bool open);           // opening faults as the transport reports
  void SetSettings(const std::string& settings);  // "4800,N,8,2"
  const std::string& Settings() const { return settings_; }
  int Baud() const { return baud_; }
  int StopBits() const { return stopBits_; }
  void SetRThreshold(int threshold);
  int RThreshold() const { return threshold_; }
  int InBufferCount() const { return static_cast<int>(buffer_.size()); }
  std::string Input();                   // takes everything waiting
  void Output(const std::string& bytes);
  int CommEvent = 0;

  // The receive event's handler (OnSerialEvent).
  std::function<void()> onComm;

 private:
  void Arrived(const std::uint8_t* data, std::size_t size);
  void Pump();
  void PostIfDue();
  void Fire();
  void ApplyLine();

  ByteTransport& transport_;
  EventPoster& poster_;
  bool open_ = false;
  std::string settings_ = "9600,N,8,1";
  int baud_ = 9600;
  int dataBits_ = 8;
  char parity_ = 'N';
  int stopBits_ = 1;
  int threshold_ = 0;
  std::string buffer_;
  // Bytes that came in behind the one that met the threshold: they reach the buffer only
  // after the posted event has run, as they would on the wire, where the next byte is
  // still on its way when the event fires. So an acknowledge read together with its
  // payload by the operating system still fires its own event first.
  std::string pending_;
  bool posted_ = false;
  bool inEvent_ = false;
};

}  // namespace quillet
