// How much of the machine others take while something is measured.
#pragma once

namespace tessara {

class MachineLoad
{
public:
    /// From now on.
    MachineLoad();

    /// The share of all cores that other processes and other guests of the host took, 0 to 1.
    double othersShare() const;

private:
    struct Sample
    {
        double wall = 0; // s
        double busy = 0; // s, of all cores together
        double own = 0;  // s, of this process and of its children that have ended
    };

    static Sample sample();

    Sample m_start = sample();
};

} // namespace tessara
