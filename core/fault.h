#pragma once
// Run-time faults carry the platform's fault number; the few routines that handle
// faults branch on it. A fault marked fatal ends the program with the run-time error
// report instead of just the present action.
#include <cmath>
#include <stdexcept>
#include <string>

namespace quillet {

enum FaultNumber : int {
  kFaultIllegalCall = 5,
  kFaultOverflow = 6,
  kFaultSubscript = 9,
  kFaultDivisionByZero = 11,
  kFaultTypeMismatch = 13,
  kFaultBadFileName = 52,
  kFaultFileNotFound = 53,
  kFaultBadFileMode = 54,
  kFaultDiskFull = 61,
  kFaultInputPastEnd = 62,
  kFaultDeviceUnavailable = 68,
  kFaultPermissionDenied = 70,
  kFaultPathAccess = 75,
  kFaultPathNotFound = 76,
  kFaultCancel = 32755,
};

// The platform's wording of a fault number, as the run-time error report shows it.
std::string FaultDescription(int number);

class Fault : public std::runtime_error {
 public:
  explicit Fault(int number, std::string detail = {});
  int number() const { return number_; }
  bool fatal() const { return fatal_; }
  const std::string& detail() const { return detail_; }
  // The same fault, now ending the program where it surfaces. `doing` tells in words
  // what was being done ("the logger's header could not be decoded"), for a report
  // that has room for more than the fault's number and name.
  Fault Fatal(std::string doing = {}) const {
    Fault f = *this;
    f.fatal_ = true;
    if (!doing.empty()) f.doing_ = std::move(doing);
    return f;
  }
  const std::string& doing() const { return doing_; }

 private:
  int number_;
  bool fatal_ = false;
  std::string detail_;
  std::string doing_;
};

// Checked arithmetic of the conversions: a zero divisor or a value that is not finite is
// a fault, never NaN or infinity.
// Inline: they sit in the per-sample path of every conversion.
inline double Checked(double x) {
  if (!std::isfinite(x)) throw Fault(kFaultOverflow);
  return x;
}
inline double Divide(double a, double b) {
  if (b == 0.0) throw Fault(kFaultDivisionByZero);
  return Checked(a / b);
}
double CheckedLog(double x);

}  // namespace quillet
