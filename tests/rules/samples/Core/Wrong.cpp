// Waits in places where the compiler loses them.
#include "DeckLink/DeckLinkManager.h"
#include "UI/Workspace.h" // wrong

Task wrong(Clock &clock)
{
    if (co_await clock.nextTurn()) // wrong
        co_return;
    while (!(co_await clock.sleep(Seconds{1}))) // wrong
        co_return;
    switch (int(co_await answer())) {} // wrong
    if (const bool slept = ready(); // wrong
        slept && co_await clock.nextTurn())
        co_return;
}

Task right(Clock &clock)
{
    const bool slept = co_await clock.nextTurn();
    if (!slept) // not: if (co_await clock.nextTurn())
        co_return;
    if (text == "while (co_await x)")
        co_await clock.nextTurn();
    while (running) {
        const bool waited = co_await clock.sleep(Seconds{1});
        if (!waited)
            co_return;
    }
}
