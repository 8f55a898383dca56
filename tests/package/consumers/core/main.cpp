// SPDX-License-Identifier: MIT
#include <pellarvine/Platform/Version.h>
#include <pellarvine/Shared/Decryptor.h>
#include <pellarvine/Shared/Encryptor.h>

int main()
{
    using namespace Pellarvine;
    const Data sealed = Encryptor::encrypt("a diary", u"a passphrase");
    const bool isSame = Decryptor::decrypt(sealed, u"a passphrase") == "a diary";
    const bool isRightVersion = reinterpret_cast<const char *>(PellarvineVersionString)[0]
                                == '0' + PELLARVINE_VERSION_MAJOR;
    return isSame && isRightVersion ? 0 : 1;
}
