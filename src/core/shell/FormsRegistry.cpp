#include "shell/FormsRegistry.h"

#include <algorithm>

#include "shell/Text.h"

namespace r6183 {

void FormsRegistry::Add(Form* form) { forms_.push_back(form); }

void FormsRegistry::Remove(Form* form) {
  const auto it = std::find(forms_.begin(), forms_.end(), form);
  if (it != forms_.end()) forms_.erase(it);
}

Form* FormsRegistry::Find(const std::string& name) const {
  for (Form* f : forms_)
    if (EqualsNoCase(f->Name(), name)) return f;
  return nullptr;
}

bool FormsRegistry::CaptionAt(int count, int index, const std::string& caption) const {
  return Count() == count && index >= 0 && index < count && At(index).Caption() == caption;
}

bool FormsRegistry::NameAt(int count, int index, const std::string& name) const {
  return Count() == count && index >= 0 && index < count && At(index).Name() == name;
}

}  // namespace r6183
