#include "frame/ui/Fine.h"

namespace sorvane {

namespace {

std::function<void()> &routineFine()
{
    static std::function<void()> r;
    return r;
}

} // namespace

void FineProgramma()
{
    if (routineFine())
        routineFine()();
}

void installaFineProgramma(std::function<void()> routine)
{
    routineFine() = std::move(routine);
}

} // namespace sorvane
