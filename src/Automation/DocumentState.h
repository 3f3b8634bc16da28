// The whole document as one object.
#pragma once

#include <QJsonObject>

namespace tessara {

class CanvasDocument;

/// Size, order, selection, every property of every layer from back to front, and what is on air.
QJsonObject documentState(const CanvasDocument &document);

} // namespace tessara
