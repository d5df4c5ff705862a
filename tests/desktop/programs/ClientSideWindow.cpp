// A window of a real toolkit that draws its own frame and, where a compositor runs, a shadow round
// it. Desktop tests and the demonstration place it.

#include <gtk/gtk.h>

#include <array>
#include <string>

namespace {

struct Wanted {
    std::string title = "Draws its own frame";
    std::string id;
    int width = 520;
    int height = 360;
    int minimumWidth = -1;
    int minimumHeight = -1;
    std::string color;
    bool fullScreen = false;
    bool dialog = false;
};

/// Takes the options off the command line.
Wanted wantedBy(int& argc, char**& argv) {
    Wanted wanted;
    char* title = nullptr;
    char* id = nullptr;
    char* size = nullptr;
    char* minimum = nullptr;
    char* color = nullptr;
    gboolean fullScreen = FALSE;
    gboolean dialog = FALSE;
    const auto option = [](const char* name, GOptionArg kind, gpointer place) {
        return GOptionEntry{name, 0, 0, kind, place, "", nullptr};
    };
    const std::array<GOptionEntry, 8> options{
        option("title", G_OPTION_ARG_STRING, static_cast<void*>(&title)),
        option("id", G_OPTION_ARG_STRING, static_cast<void*>(&id)),
        option("size", G_OPTION_ARG_STRING, static_cast<void*>(&size)),
        option("minimum", G_OPTION_ARG_STRING, static_cast<void*>(&minimum)),
        option("color", G_OPTION_ARG_STRING, static_cast<void*>(&color)),
        option("full-screen", G_OPTION_ARG_NONE, &fullScreen),
        option("dialog", G_OPTION_ARG_NONE, &dialog),
        GOptionEntry{}};
    gtk_init_with_args(&argc, &argv, nullptr, options.data(), nullptr, nullptr);
    const auto take = [](char* text, std::string& into) {
        if (text != nullptr) {
            into = text;
            g_free(text);
        }
    };
    const auto takeSize = [](char* text, int& width, int& height) {
        if (text != nullptr) {
            char* rest = nullptr;
            width = static_cast<int>(g_ascii_strtoll(text, &rest, 10));
            height = static_cast<int>(g_ascii_strtoll(rest + (*rest == 'x' ? 1 : 0), nullptr, 10));
            g_free(text);
        }
    };
    take(title, wanted.title);
    take(id, wanted.id);
    take(color, wanted.color);
    takeSize(size, wanted.width, wanted.height);
    takeSize(minimum, wanted.minimumWidth, wanted.minimumHeight);
    wanted.fullScreen = fullScreen != FALSE;
    wanted.dialog = dialog != FALSE;
    return wanted;
}

void paint(GtkWidget* window, const std::string& color) {
    GtkCssProvider* style = gtk_css_provider_new();
    const std::string rule = "window { background: " + color + "; }";
    gtk_css_provider_load_from_data(style, rule.c_str(), -1, nullptr);
    gtk_style_context_add_provider(gtk_widget_get_style_context(window), GTK_STYLE_PROVIDER(style),
                                   GTK_STYLE_PROVIDER_PRIORITY_USER);
    g_object_unref(style);
}

}  // namespace

int main(int argc, char** argv) {
    const Wanted wanted = wantedBy(argc, argv);
    gdk_set_program_class("ClientSideWindow");
    if (!wanted.id.empty()) {
        g_set_prgname(wanted.id.c_str());
    }
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    GtkWidget* bar = gtk_header_bar_new();
    gtk_header_bar_set_title(GTK_HEADER_BAR(bar), wanted.title.c_str());
    gtk_header_bar_set_show_close_button(GTK_HEADER_BAR(bar), TRUE);
    gtk_window_set_titlebar(GTK_WINDOW(window), bar);
    gtk_window_set_title(GTK_WINDOW(window), wanted.title.c_str());
    gtk_window_set_default_size(GTK_WINDOW(window), wanted.width, wanted.height);
    gtk_widget_set_size_request(window, wanted.minimumWidth, wanted.minimumHeight);
    if (wanted.color.empty()) {
        gtk_container_add(GTK_CONTAINER(window), gtk_label_new("A window with a frame of its own"));
    } else {
        paint(window, wanted.color);
    }
    if (wanted.dialog) {
        GtkWidget* parent = gtk_window_new(GTK_WINDOW_TOPLEVEL);
        gtk_window_set_title(GTK_WINDOW(parent), ("parent of " + wanted.title).c_str());
        gtk_widget_show_all(parent);
        gtk_window_set_transient_for(GTK_WINDOW(window), GTK_WINDOW(parent));
        gtk_window_set_type_hint(GTK_WINDOW(window), GDK_WINDOW_TYPE_HINT_DIALOG);
    }
    if (wanted.fullScreen) {
        gtk_window_fullscreen(GTK_WINDOW(window));
    }
    g_signal_connect(window, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
    gtk_widget_show_all(window);
    gtk_main();
    return 0;
}
