// A frame that knows where it goes.
#include "Models/CanvasDocument.h"
#include "DeckLink/DeckLinkBridge.h" // wrong
#include "Automation/ScriptEngine.h" // wrong
