// Uses Qt Core and does nothing else: what it takes to start is what nobody can do without.

#include <QtGlobal>

int main()
{
    return qVersion() == nullptr;
}
