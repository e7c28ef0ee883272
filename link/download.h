#pragma once
// The download: "R" fetches the 22-byte header, "T" the memory block of exactly the
// announced length.
#include <string>

namespace quillet {
struct App;

constexpr int kHeaderBytes = 22;
constexpr int kReceiveBufferLimit = 32766;
constexpr double kTicksPerDay = 98304;

void StartDownload(App& app);
void RestartDownload(App& app);  // the watchdog's restart of a stalled block
void HeaderReplyEvent(App& app);  // receive event in header mode
void BlockReplyEvent(App& app);   // receive event in block mode
void OnDownloadTick(App& app);
void OnBlockTick(App& app);
void OnProgressTick(App& app);
void DecodeHeader(App& app, const std::string& reply);
void PresentRecordTiming(App& app);
void FinishBlock(App& app);

}  // namespace quillet
