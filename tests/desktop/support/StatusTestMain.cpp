#include <QCoreApplication>

#include <gtest/gtest.h>

// The bus is spoken to by the toolkit, which wants its application object.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
