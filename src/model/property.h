// A plain property: a value with a default, read as Name() and written as SetName().
#pragma once

#define ZELMAR_PROPERTY(Type, Name, Default) \
 public:                                     \
  const Type& Name() const {                 \
    return Name##_;                          \
  }                                          \
  void Set##Name(const Type& value) {        \
    Name##_ = value;                         \
  }                                          \
                                             \
 private:                                    \
  Type Name##_ = Default;
