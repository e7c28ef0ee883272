#pragma once
// The Scale command and the File, Scaling entries: a profile dialog opened for a rescale
// of the record on screen, or for profile entry alone.
namespace quillet {
struct App;

// mnuScale: opens the present model's profile dialog modally and converts the record
// again through the new profile.
void MnuScale(App& app);
// mnu420sca, mnu100sca, mnu10sca: profile entry only, not modal, the record untouched.
void Mnu420sca(App& app);
void Mnu100sca(App& app);
void Mnu10sca(App& app);

}  // namespace quillet
