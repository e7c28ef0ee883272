#pragma once
namespace quillet {
struct Views;
void InstallDefaultCaptions(Views& v);
}  // namespace quillet
