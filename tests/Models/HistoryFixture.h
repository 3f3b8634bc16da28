// A document whose history is kept, on a clock that stands still.
#pragma once

#include "Models/DocumentFixture.h"
#include "Models/DocumentHistory.h"

namespace tessara {

using std::chrono::milliseconds;
using std::chrono::seconds;

class HistoryFixture : public DocumentFixture
{
protected:
    /// A title whose watches stand.
    TextLayer *addTitle()
    {
        TextLayer *title = document.addTextLayer();
        settle();
        return title;
    }

    /// Long enough for any property to count as changed.
    void settle() { clock.advance(milliseconds{600}); }

    /// What a macro does that is over before any quiet time is.
    void playMacro(const std::function<void()> &steps)
    {
        isMacroRunning = true;
        steps();
        isMacroRunning = false;
    }

    UndoStack &undo() { return history.undoStack(); }
    TextLayer *title() const { return document.layersOf<TextLayer>().first(); }

    bool isMacroRunning = false;
    DocumentHistory history{document, clock, [this] { return isMacroRunning; }};
};

} // namespace tessara
