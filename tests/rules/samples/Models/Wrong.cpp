// A document that knows of cards and windows.
#include "Models/Layer.h"
#include "DeckLink/DeckLinkModels.h" // wrong
#include "../UI/Workspace.h" // wrong
#include <QObject>
