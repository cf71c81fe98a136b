// A test program that starts itself again, for a test to end it.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMap>
#include <QProcess>

namespace zelmar::testing_support {

// Starts this program with one of its tests and with settings of the environment, and waits until it prints
// `word`. What it leaves behind goes to `desk`.
inline void StartAgain(QProcess& process, const char* test, const QMap<QString, QString>& settings,
                       const QString& desk, const char* word) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("TMPDIR"), desk);
  for (auto setting = settings.cbegin(); setting != settings.cend(); ++setting)
    environment.insert(setting.key(), setting.value());
  process.setProcessEnvironment(environment);
  process.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--gtest_filter=") + QLatin1String(test)});
  QByteArray output;
  while (!output.contains(word)) {
    ASSERT_TRUE(process.waitForReadyRead()) << output.toStdString();
    output += process.readAll();
  }
}

}  // namespace zelmar::testing_support
