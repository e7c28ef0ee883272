#pragma once
// The data printout: the samples as a table, 500 to a page in five columns of 100 rows,
// and PrintOpt, which asks for the whole record or the shown part of a zoomed graph.
#include <string>

namespace quillet {

struct App;

// mnuPData.
void PrintData(App& app);

// The number format of the printed values for a record's model code; empty gives the
// plain form of the number.
std::string DataValueFormat(double recordModelCode);

// PrintOpt: opening, and its three buttons; each hides the form.
void OpenPrintOpt(App& app);
void PrintOptEntireRecord(App& app);
void PrintOptDisplayedOnly(App& app);
void PrintOptCancel(App& app);

}  // namespace quillet
