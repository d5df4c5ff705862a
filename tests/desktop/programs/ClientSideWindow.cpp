// A window of a real toolkit that draws its own frame and, where a compositor runs, a shadow round
// it. Desktop tests and the demonstration place it.

#include <gtk/gtk.h>

int main(int argc, char** argv) {
    gtk_init(&argc, &argv);
    gdk_set_program_class("ClientSideWindow");
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    GtkWidget* bar = gtk_header_bar_new();
    gtk_header_bar_set_title(GTK_HEADER_BAR(bar), "Draws its own frame");
    gtk_header_bar_set_show_close_button(GTK_HEADER_BAR(bar), TRUE);
    gtk_window_set_titlebar(GTK_WINDOW(window), bar);
    gtk_window_set_default_size(GTK_WINDOW(window), 520, 360);
    gtk_container_add(GTK_CONTAINER(window), gtk_label_new("A window with a frame of its own"));
    g_signal_connect(window, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
    gtk_widget_show_all(window);
    gtk_main();
    return 0;
}
