#include "support/fake_platform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/fault.h"
#include "graph/annotation.h"
#include "link/link_supervision.h"
#include "link/timeset.h"
#include "log1/hooks.h"
#include "log1/language.h"
#include "log1/startup.h"
#include "measure/probe_table.h"
#include "storage/text_export.h"
#include "support/settings_text.h"

namespace quillet::testing {

void VirtualScheduler::At(double ms, std::function<void()> fn) {
  events_.emplace(Key{ms, seq_++}, std::move(fn));
}

void VirtualScheduler::Every(double intervalMs, std::function<void()> fn) {
  // Each firing sets the next, at whole intervals from now; the next one holds the tick.
  auto tick = std::make_shared<std::function<void(double)>>();
  *tick = [this, intervalMs, fn = std::move(fn), weak = std::weak_ptr(tick)](double at) {
    At(at + intervalMs, [self = weak.lock(), at, intervalMs] { (*self)(at + intervalMs); });
    fn();
  };
  At(now_ + intervalMs, [tick, first = now_ + intervalMs] { (*tick)(first); });
}

void VirtualScheduler::RunUntil(double ms) {
  while (!events_.empty() && events_.begin()->first.first <= ms) {
    now_ = std::max(now_, events_.begin()->first.first);
    const std::function<void()> fn = std::move(events_.begin()->second);
    events_.erase(events_.begin());
    fn();
  }
  now_ = std::max(now_, ms);
}

void FakeTransport::Open(int portNumber) {
  if (auto f = openFaults.find(portNumber); f != openFaults.end()) throw Fault(f->second);
  open_ = true;
  opened.push_back(portNumber);
}

void FakeTransport::Close() {
  open_ = false;
  pending_.clear();
}

void FakeTransport::SetLine(int b, int, char, int stop) {
  baud = b;
  stopBits = stop;
}

void FakeTransport::Write(const std::vector<std::uint8_t>& bytes) {
  const std::string text(bytes.begin(), bytes.end());
  written.push_back({s_.now_ms(), baud, stopBits, text});
  if (!peer) return;
  for (const TimedReply& r : peer(text, s_.now_ms() / 1000.0, baud, stopBits))
    Arrive(r.atSeconds * 1000.0, r.byte);
}

void FakeTransport::Inject(double atMs, const std::string& bytes) {
  for (char c : bytes) Arrive(atMs, static_cast<std::uint8_t>(c));
}

void FakeTransport::Arrive(double atMs, std::uint8_t byte) {
  const std::uint64_t id = nextId_++;
  pending_[id] = {atMs, byte};
  s_.At(atMs, [this, id] { Deliver(id); });
}

void FakeTransport::Deliver(std::uint64_t id) {
  auto it = pending_.find(id);
  if (it == pending_.end()) return;
  const std::uint8_t b = it->second.second;
  pending_.erase(it);
  if (open_ && onBytes) onBytes(&b, 1);
}

void FakeTransport::Settle(double seconds) {
  const double limit = s_.now_ms() + seconds * 1000.0;
  std::vector<std::uint64_t> due;
  for (auto& [id, p] : pending_)
    if (p.first <= limit) due.push_back(id);
  for (std::uint64_t id : due) Deliver(id);
}

MsgAnswer ScriptedUi::Message(const MessageRequest& request) {
  messages.push_back(request);
  if (answer) return answer(request);
  const bool ok = request.buttons == MsgButtons::Ok || request.buttons == MsgButtons::OkCancel;
  return ok ? MsgAnswer::Ok : MsgAnswer::Yes;
}

namespace {
std::string NextAnswer(std::vector<std::string>& answers, const char* what) {
  if (answers.empty()) {
    ADD_FAILURE() << "a " << what << " dialog opened with no answer scripted";
    throw Fault(kFaultCancel);
  }
  std::string path = answers.front();
  answers.erase(answers.begin());
  if (path.empty()) throw Fault(kFaultCancel);
  return path;
}

template <auto view>
bool Shown(const Views& v) {
  return (v.*view).visible;
}

std::string MakeTempDir() {
  std::string dir = ::testing::TempDir() + "/quillet-XXXXXX";
  if (!mkdtemp(dir.data())) throw std::runtime_error("mkdtemp failed");
  return dir;
}
}  // namespace

std::string ScriptedUi::OpenFileDialog(const std::string& filter) {
  fileFilters.push_back(filter);
  return NextAnswer(fileAnswers, "file");
}

std::string ScriptedUi::SaveFileDialog(const std::string& filter) {
  saveFilters.push_back(filter);
  return NextAnswer(saveAnswers, "save");
}

void ScriptedUi::ShowModal(DialogId dialog) {
  modals.push_back(dialog);
  if (onModal) onModal(dialog);
  if (!app) return;
  // By default the user takes the first language, confirms the clock as it stands and
  // cancels every other dialog; the tests of the other dialogs answer them themselves.
  struct Default {
    void (*answer)(App&);
    bool (*open)(const Views&);
  };
  static const std::map<DialogId, Default> defaults = {
      {DialogId::langfrm, {[](App& a) { LangfrmChoose(a, 1), LangfrmOk(a); }, Shown<&Views::langfrm>}},
      {DialogId::frmPort, {FrmPortCancel, Shown<&Views::frmPort>}},
      {DialogId::about2, {About2Close, Shown<&Views::about2>}},
      {DialogId::frmTimeset, {SetClock, Shown<&Views::frmTimeset>}},
      {DialogId::Func1, {[](App& a) { ProbeDialogCancel(a, 1); }, Shown<&Views::Func1>}},
      {DialogId::FUNC2, {[](App& a) { ProbeDialogCancel(a, 2); }, Shown<&Views::FUNC2>}},
      {DialogId::FUNC3, {[](App& a) { ProbeDialogCancel(a, 3); }, Shown<&Views::FUNC3>}},
      {DialogId::Describe, {DescribeCancel, Shown<&Views::Describe>}},
      {DialogId::SaveOpt, {SaveOptCancel, Shown<&Views::SaveOpt>}},
  };
  const auto d = defaults.find(dialog);
  if (d == defaults.end()) return;
  if (!onModal) d->second.answer(*app);
  if (d->second.open(app->v)) ADD_FAILURE() << "a modal dialog was left open by the test's user";
}

TestApp::TestApp(DateTime start)
    : dir(MakeTempDir()), clock(sched, start), timers(sched), poster(sched), transport(sched) {
  std::filesystem::create_directories(dir + "/prog");
  platform.reset(new Platform{ui, clock, timers, poster, transport, FilePlaces{dir + "/prog", dir}});
  app = std::make_unique<App>(*platform, Log1Hooks());
  app->port.onComm = [a = app.get()] { OnSerialEvent(*a); };
  ui.app = app.get();
}

TestApp::~TestApp() {
  std::error_code ec;
  std::filesystem::remove_all(dir, ec);
}

void TestApp::WriteFile(const std::string& name, const std::string& content, bool programDir) {
  std::ofstream(programDir ? dir + "/prog/" + name : dir + "/" + name, std::ios::binary) << content;
}

std::string TestApp::ReadFile(const std::string& name) const {
  std::ifstream in(dir + "/" + name, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

bool TestApp::FileExists(const std::string& name) const { return std::filesystem::exists(dir + "/" + name); }

void TestApp::Start() {
  Dispatch(*app, [this] { StartProgram(*app); });
}

void TestApp::WriteTwoLanguageFile() {
  std::ostringstream f;
  f << "\"2\",\"200\"\n\"English\",\"Deutsch\"\n\"help/en.html\",\"help/de.html\"\n";
  for (int n = 1; n <= 200; ++n) f << "\"en" << n << "\",\"de" << n << "\"\n";
  WriteFile("loglang.txt", f.str(), true);
}

void TestApp::WriteSettings(int comPort, int language, int baud, int fahrenheit, int usDate) {
  WriteFile("logger1.ini", SettingsFileText({comPort, language, baud, fahrenheit, usDate, {}, ""}));
}

std::vector<std::string> ScriptedUi::MessageTexts() const {
  std::vector<std::string> t;
  for (const MessageRequest& m : messages) t.push_back(m.text);
  return t;
}

int FaultOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const Fault& f) {
    return f.number();
  }
  return 0;
}

std::vector<double> TestApp::RequestTimes(char letter) const {
  std::vector<double> t;
  for (const WrittenBytes& w : transport.written)
    if (w.bytes == std::string{'\0', letter}) t.push_back(w.atMs);
  return t;
}

}  // namespace quillet::testing
