#include "core/fault.h"

#include <cmath>

namespace quillet {

std::string FaultDescription(int number) {
  switch (number) {
    case kFaultIllegalCall: return "Invalid procedure call or argument";
    case kFaultOverflow: return "Overflow";
    case kFaultSubscript: return "Subscript out of range";
    case kFaultDivisionByZero: return "Division by zero";
    case kFaultTypeMismatch: return "Type mismatch";
    case kFaultBadFileName: return "Bad file name or number";
    case kFaultFileNotFound: return "File not found";
    case kFaultBadFileMode: return "Bad file mode";
    case kFaultDiskFull: return "Disk full";
    case kFaultInputPastEnd: return "Input past end of file";
    case kFaultDeviceUnavailable: return "Device unavailable";
    case kFaultPermissionDenied: return "Permission denied";
    case kFaultPathAccess: return "Path/File access error";
    case kFaultPathNotFound: return "Path not found";
    case kFaultCancel: return "Cancel was selected.";
    default: return "Application-defined or object-defined error";
  }
}

Fault::Fault(int number, std::string detail)
    : std::runtime_error("Run-time error '" + std::to_string(number) + "': " + FaultDescription(number) +
                         (detail.empty() ? "" : " (" + detail + ")")),
      number_(number),
      detail_(std::move(detail)) {}

double CheckedLog(double x) {
  if (!(x > 0.0)) throw Fault(kFaultIllegalCall, "logarithm of a value not above 0");
  return Checked(std::log(x));
}

}  // namespace quillet
