// The one instance of a subsystem's state. It has no other dependency, so that
// the platform layer keeps its state the same way as the game.
#pragma once

// Made on first use (see CONTRIBUTING.md) and never destroyed: states hold
// handles into each other's stores (textures, sounds, buffers, streams), and at
// the end of the process no order of destruction would suit them all. The
// system takes the memory back.
template <typename State>
State& singleInstance() {
    static State* const instance = new State();
    return *instance;
}
