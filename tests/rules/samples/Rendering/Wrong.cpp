// A frame that knows where it goes.
#include "Models/CanvasDocument.h"
#include "DeckLink/FrameBytes.h" // wrong
#include "Automation/ScriptEngine.h" // wrong
