#include <QApplication>

/// A Qt program that takes its environment as it comes.
int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    return 0;
}
