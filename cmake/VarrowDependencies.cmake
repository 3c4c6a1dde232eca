# Finds the libraries that varrow calls, each as an imported target.
find_package(Boost 1.74 REQUIRED COMPONENTS date_time filesystem locale thread
                                            stacktrace_backtrace)
find_package(Poco 1.11 REQUIRED COMPONENTS Foundation)
find_package(OpenMP REQUIRED)
find_package(Threads REQUIRED)

find_package(jsoncpp 1.9.5 REQUIRED)
find_package(log4cplus 2.0 REQUIRED)
