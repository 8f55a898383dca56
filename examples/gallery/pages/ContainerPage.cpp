// SPDX-License-Identifier: MIT
#include "../Page.h"

namespace {

class ContainerPage : public Page
{
public:
    explicit ContainerPage(QWidget *parent)
        : Page(tr("Encrypted container"), tr("Seals a file under a passphrase."), parent)
    { }
};

} // namespace

Page *makeContainerPage(QWidget *parent)
{
    return new ContainerPage(parent);
}
