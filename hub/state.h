#pragma once
// The one state object behind the main window: the sum of each subsystem's own part.
// Dialogs and handlers read and write these fields directly; there is no other shared
// store.
#include "core/app_settings.h"
#include "core/language_table.h"
#include "core/probe_memory.h"
#include "core/scale_tables.h"
#include "graph/graph_state.h"
#include "link/link_state.h"
#include "measure/measure_state.h"
#include "printing/printing_state.h"
#include "profiles/profile_state.h"
#include "storage/record_state.h"

namespace quillet {

struct State {
  // The program's own: settings, date patterns, words.
  AppSettings settings;
  DateFormats fmt;
  LanguageData lang;
  // The link: the conversation, the logger's report, the clock offset.
  LinkState link;
  LoggerFields logger;
  ClockFields clock;
  // The measurement model: probes, units, the probe choice in progress.
  ProbeMemoryTables probes;
  ProbeTable probeTable;
  MeasureState measure;
  UnitTable UnitByModel;
  TempUnitTable TempUnitNames;
  // The user's scale profiles.
  ScaleTables scales;
  ProfileState profiles;
  // The record on screen, and the Save and Open commands.
  SampleRecord record;
  FileState files;
  // The graph: scales of the last drawing, the zoom, the panel, the fonts.
  GraphState graph;
  PanelState panel;
  Fonts fonts;
  // The printouts.
  PrintingState printing;
};

}  // namespace quillet
