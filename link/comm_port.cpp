#include "link/comm_port.h"

#include <sstream>
#include <vector>

#include "core/fault.h"

namespace quillet {

CommPort::CommPort(ByteTransport& transport, EventPoster& poster) : transport_(transport), poster_(poster) {
  transport_.onBytes = [this](const std::uint8_t* data, std::size_t size) { Arrived(data, size); };
}

void CommPort::SetPortOpen(bool open) {
  if (open == open_) return;
  if (open) {
    transport_.Open(CommPortNumber);
    open_ = true;
    buffer_.clear();
    pending_.clear();
    ApplyLine();
  } else {
    transport_.Close();
    open_ = false;
    buffer_.clear();
    pending_.clear();
  }
}

void CommPort::SetSettings(const std::string& settings) {
  // "baud,parity,data,stop"; a malformed text is fault 380 of the control, and leaves the
  // line as it was.
  std::stringstream ss(settings);
  std::string baud, parity, data, stop;
  if (!std::getline(ss, baud, ',') || !std::getline(ss, parity, ',') || !std::getline(ss, data, ',') ||
      !std::getline(ss, stop, ',') || parity.size() != 1) {
    throw Fault(380, "Invalid property value: " + settings);
  }
  try {
    baud_ = std::stoi(baud);
    dataBits_ = std::stoi(data);
    stopBits_ = std::stoi(stop);
  } catch (const std::exception&) {
    throw Fault(380, "Invalid property value: " + settings);
  }
  parity_ = parity[0];
  settings_ = settings;
  if (open_) ApplyLine();
}

void CommPort::ApplyLine() { transport_.SetLine(baud_, dataBits_, parity_, stopBits_); }

void CommPort::SetRThreshold(int threshold) {
  threshold_ = threshold;
  PostIfDue();
}

std::string CommPort::Input() {
  std::string all;
  all.swap(buffer_);
  return all;
}

void CommPort::Output(const std::string& bytes) {
  if (!open_) throw Fault(kFaultPortNotOpen, "Operation valid only when the port is open");
  transport_.Write(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
}

void CommPort::Arrived(const std::uint8_t* data, std::size_t size) {
  if (!open_) return;
  pending_.append(reinterpret_cast<const char*>(data), size);
  Pump();
}

void CommPort::Pump() {
  std::size_t taken = 0;
  while (taken < pending_.size() && !posted_) {
    // Bytes beyond the receive buffer are lost, as on the real control.
    if (static_cast<int>(buffer_.size()) < InBufferSize) buffer_.push_back(pending_[taken]);
    ++taken;
    PostIfDue();
  }
  pending_.erase(0, taken);
}

void CommPort::PostIfDue() {
  if (posted_ || threshold_ <= 0 || InBufferCount() < threshold_) return;
  posted_ = true;
  poster_.Post([this] { Fire(); });
}

void CommPort::Fire() {
  posted_ = false;
  // The condition is tested again when the event runs: a flush in between cancels it.
  if (inEvent_ || !open_ || threshold_ <= 0 || InBufferCount() < threshold_) {
    if (!inEvent_) Pump();
    return;
  }
  inEvent_ = true;
  CommEvent = kCommEventReceive;
  try {
    if (onComm) onComm();
  } catch (...) {
    inEvent_ = false;
    Pump();
    throw;
  }
  inEvent_ = false;
  Pump();
}

}  // namespace quillet
