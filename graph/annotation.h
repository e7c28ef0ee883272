#pragma once
// The record's title and texts, edited in Describe, and the copy of the graph to the
// clipboard. The annotation is text of the record only: nothing is drawn by hand.
namespace quillet {
struct App;

// Command3 "Annotate": shows Describe and, when OK changed a text, applies it.
void AnnotateGraph(App& app);

// Describe. Opening takes the record's texts into the fields; OK stores them cut to
// their limits; Cancel leaves the record alone.
void OpenDescribe(App& app);
void DescribeOk(App& app);
void DescribeCancel(App& app);

// Redraws with the new title and marks the record unsaved.
void ApplyAnnotation(App& app);

// mnuGClip.
void CopyGraphToClipboard(App& app);

}  // namespace quillet
