// A card that knows of layers.
#include "Base/Clock.h"
#include "DeckLink/DeckLinkModels.h"
#include "Models/Layer.h" // wrong
#include "Rendering/RenderEngine.h" // wrong
#include <Core/AppState.h> // wrong
