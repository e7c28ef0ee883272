#pragma once
// A PNG writer tuned for graphs: a few flat colours on white. Pictures of up to 256
// colours go out as a palette image, others as RGB; the rows are packed as runs of one
// colour and repeats of the row above, which is several times faster than a general
// encoder at about the same size.
#include <QByteArray>
#include <QImage>

namespace quillet {

QByteArray EncodePng(const QImage& image);

}  // namespace quillet
