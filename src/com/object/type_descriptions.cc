// SPDX-License-Identifier: MIT
#include "com/object/type_descriptions.h"

#include <string>

#include "com/library/module.h"

namespace stockbook::com {

ComPtr<ITypeInfo> DescriptionOf(REFGUID id) {
  ComPtr<ITypeLib> library;
  ComPtr<ITypeInfo> described;
  if (SUCCEEDED(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library.PutTyped())))
    library->GetTypeInfoOfGuid(id, described.PutTyped());
  return described;
}

}  // namespace stockbook::com
