// build_template <data folder> <output>: the template database from the library's texts.

#include <QCoreApplication>
#include <cstdio>

#include "platform/failure.h"
#include "template/template_builder.h"

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: build_template <data folder> <output ZelmarTemplate.mdb>\n");
    return 2;
  }
  try {
    zelmar::BuildTemplate(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
  } catch (const zelmar::Failure& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
  return 0;
}
