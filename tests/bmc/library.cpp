// The parts of Boost.Asio and Boost.Beast that need to be compiled only once;
// the other files see declarations alone, which halves their compile time.
#include <boost/asio/impl/src.hpp>
#include <boost/asio/ssl/impl/src.hpp>
#include <boost/beast/src.hpp>
