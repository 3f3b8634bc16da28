// What the document can refuse.
#pragma once

#include <QString>

namespace tessara {

enum class CanvasDocumentError { invalidImage };

inline QString text(CanvasDocumentError error)
{
    switch (error) {
    case CanvasDocumentError::invalidImage:
        return QStringLiteral("Could not load image file.");
    }
    Q_UNREACHABLE();
}

} // namespace tessara
