// Windows for the demonstration's pictures: "picture" and "waves" (drawings), "notes" (a text),
// "calendar", and "caption" (a panel that says what was pressed). They draw their own frames, as
// programs of this toolkit do.

#include <gtk/gtk.h>

#include <cmath>
#include <string>

namespace {

constexpr double fullCircle = 6.283185307179586;

struct Color {
    double red;
    double green;
    double blue;
};

void fillGradient(cairo_t* cairo, double width, double height, const Color& top,
                  const Color& bottom) {
    cairo_pattern_t* sky = cairo_pattern_create_linear(0, 0, 0, height);
    cairo_pattern_add_color_stop_rgb(sky, 0, top.red, top.green, top.blue);
    cairo_pattern_add_color_stop_rgb(sky, 1, bottom.red, bottom.green, bottom.blue);
    cairo_set_source(cairo, sky);
    cairo_rectangle(cairo, 0, 0, width, height);
    cairo_fill(cairo);
    cairo_pattern_destroy(sky);
}

// A ridge across the picture; `wave` and `phase` give each its own line.
void drawRidge(cairo_t* cairo, double width, double height, double level, double wave, double phase,
               const Color& color) {
    cairo_move_to(cairo, 0, height);
    constexpr int pieces = 160;
    for (int piece = 0; piece <= pieces; ++piece) {
        const double part = static_cast<double>(piece) / pieces * fullCircle;
        const double y = height * (level + 0.05 * std::sin(part * wave + phase) +
                                   0.03 * std::sin(part * wave * 2.3 + phase * 1.7));
        cairo_line_to(cairo, width * piece / pieces, y);
    }
    cairo_line_to(cairo, width, height);
    cairo_close_path(cairo);
    cairo_set_source_rgb(cairo, color.red, color.green, color.blue);
    cairo_fill(cairo);
}

gboolean drawPicture(GtkWidget* area, cairo_t* cairo, gpointer /*unused*/) {
    const double width = gtk_widget_get_allocated_width(area);
    const double height = gtk_widget_get_allocated_height(area);
    fillGradient(cairo, width, height, {0.16, 0.22, 0.42}, {0.98, 0.68, 0.45});
    cairo_arc(cairo, width * 0.68, height * 0.42, std::fmin(width, height) * 0.11, 0, fullCircle);
    cairo_set_source_rgb(cairo, 1.0, 0.91, 0.72);
    cairo_fill(cairo);
    drawRidge(cairo, width, height, 0.58, 1.1, 0.4, {0.45, 0.36, 0.52});
    drawRidge(cairo, width, height, 0.69, 1.6, 2.1, {0.29, 0.27, 0.42});
    drawRidge(cairo, width, height, 0.82, 0.9, 4.0, {0.14, 0.17, 0.28});
    return TRUE;
}

gboolean drawWaves(GtkWidget* area, cairo_t* cairo, gpointer /*unused*/) {
    const double width = gtk_widget_get_allocated_width(area);
    const double height = gtk_widget_get_allocated_height(area);
    fillGradient(cairo, width, height, {0.80, 0.92, 0.93}, {0.95, 0.97, 0.94});
    drawRidge(cairo, width, height, 0.46, 1.4, 1.0, {0.53, 0.79, 0.80});
    drawRidge(cairo, width, height, 0.60, 1.9, 2.6, {0.28, 0.63, 0.69});
    drawRidge(cairo, width, height, 0.76, 1.2, 0.2, {0.13, 0.44, 0.55});
    return TRUE;
}

GtkWidget* makeDrawing(const std::string& what) {
    GtkWidget* area = gtk_drawing_area_new();
    g_signal_connect(area, "draw", G_CALLBACK(what == "waves" ? drawWaves : drawPicture), nullptr);
    return area;
}

// Lets the window become smaller than what is in it.
GtkWidget* scrolling(GtkWidget* content) {
    GtkWidget* pane = gtk_scrolled_window_new(nullptr, nullptr);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(pane), GTK_POLICY_EXTERNAL,
                                   GTK_POLICY_EXTERNAL);
    gtk_container_add(GTK_CONTAINER(pane), content);
    return pane;
}

GtkWidget* makeNotes() {
    GtkWidget* view = gtk_text_view_new();
    gtk_text_view_set_left_margin(GTK_TEXT_VIEW(view), 28);
    gtk_text_view_set_right_margin(GTK_TEXT_VIEW(view), 28);
    gtk_text_view_set_top_margin(GTK_TEXT_VIEW(view), 24);
    gtk_text_view_set_pixels_below_lines(GTK_TEXT_VIEW(view), 6);
    gtk_text_view_set_wrap_mode(GTK_TEXT_VIEW(view), GTK_WRAP_WORD);
    gtk_text_view_set_cursor_visible(GTK_TEXT_VIEW(view), FALSE);
    GtkTextBuffer* buffer = gtk_text_view_get_buffer(GTK_TEXT_VIEW(view));
    GtkTextIter end;
    gtk_text_buffer_get_end_iter(buffer, &end);
    gtk_text_buffer_insert_markup(
        buffer, &end,
        "<span size='xx-large' weight='bold'>Weekend</span>\n\n"
        "<span size='large'>Take the early train to the coast, before the crowds.\n"
        "Walk along the cliffs as far as the lighthouse; lunch at the harbour.\n"
        "Back over the hills, with time for the bakery.\n\n"
        "<b>To bring</b>\n"
        "\342\200\242  the big umbrella\n"
        "\342\200\242  binoculars\n"
        "\342\200\242  bread, cheese, two apples\n\n"
        "<i>The late train leaves at ten past nine.</i></span>",
        -1);
    return view;
}

GtkWidget* makeCalendar() {
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    GtkWidget* calendar = gtk_calendar_new();
    gtk_calendar_select_month(GTK_CALENDAR(calendar), 5, 2030);
    gtk_calendar_select_day(GTK_CALENDAR(calendar), 14);
    gtk_container_set_border_width(GTK_CONTAINER(box), 18);
    gtk_box_pack_start(GTK_BOX(box), calendar, TRUE, TRUE, 0);
    return box;
}

void showCaption(GtkLabel* label, GdkWindow* window) {
    GdkAtom type = GDK_NONE;
    gint length = 0;
    guchar* text = nullptr;
    if (gdk_property_get(window, gdk_atom_intern_static_string("_LUMATILE_CAPTION"), GDK_NONE, 0,
                         4096, FALSE, &type, nullptr, &length, &text) != FALSE &&
        text != nullptr) {
        const std::string caption(reinterpret_cast<const char*>(text),
                                  static_cast<std::size_t>(length));
        gtk_label_set_markup(label, caption.c_str());
        g_free(text);
    }
}

gboolean captionChanged(GtkWidget* widget, GdkEventProperty* /*event*/, gpointer label) {
    showCaption(GTK_LABEL(label), gtk_widget_get_window(widget));
    return FALSE;
}

// A panel along the lower edge of the root's first monitor. What it says is put into a property.
GtkWidget* makeCaption(int width, int lowerEdge, int rootHeight) {
    constexpr int height = 44;
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_title(GTK_WINDOW(window), "caption");
    gtk_window_set_type_hint(GTK_WINDOW(window), GDK_WINDOW_TYPE_HINT_DOCK);
    gtk_window_set_default_size(GTK_WINDOW(window), width, height);
    gtk_window_move(GTK_WINDOW(window), 0, lowerEdge - height);
    GtkWidget* label = gtk_label_new(nullptr);
    gtk_container_add(GTK_CONTAINER(window), label);
    gtk_widget_add_events(window, GDK_PROPERTY_CHANGE_MASK);
    g_signal_connect(window, "property-notify-event", G_CALLBACK(captionChanged), label);
    gtk_widget_realize(window);
    // Left, right, top, bottom, and the spans; the lower strut counts from the root's edge.
    const gulong strut[12] = {0, 0, 0, static_cast<gulong>(rootHeight - lowerEdge + height),
                              0, 0, 0, 0,
                              0, 0, 0, static_cast<gulong>(width - 1)};
    gdk_property_change(gtk_widget_get_window(window),
                        gdk_atom_intern_static_string("_NET_WM_STRUT_PARTIAL"),
                        gdk_atom_intern_static_string("CARDINAL"), 32, GDK_PROP_MODE_REPLACE,
                        reinterpret_cast<const guchar*>(strut), 12);
    return window;
}

void loadStyle() {
    GtkCssProvider* provider = gtk_css_provider_new();
    gtk_css_provider_load_from_data(provider,
                                    "window#caption { background: #14181f; color: #e6e9ef;"
                                    " font-size: 17px; }"
                                    "textview, textview text { background: #fbf8f1; color: #2b2b33;"
                                    " font-size: 15px; }"
                                    "calendar { font-size: 16px; }",
                                    -1, nullptr);
    gtk_style_context_add_provider_for_screen(gdk_screen_get_default(),
                                              GTK_STYLE_PROVIDER(provider),
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(provider);
}

const char* titleOf(const std::string& what) {
    if (what == "notes") {
        return "Notes";
    }
    if (what == "calendar") {
        return "Calendar";
    }
    return what == "waves" ? "Waves.png" : "Evening.png";
}

}  // namespace

int main(int argc, char** argv) {
    gtk_init(&argc, &argv);
    if (argc < 2) {
        g_printerr(
            "usage: %s picture|waves|notes|calendar\n"
            "       %s caption WIDTH LOWER-EDGE ROOT-HEIGHT\n",
            argv[0], argv[0]);
        return 2;
    }
    loadStyle();
    const std::string what = argv[1];
    gdk_set_program_class(("Scene-" + what).c_str());
    GtkWidget* window = nullptr;
    if (what == "caption" && argc == 5) {
        window = makeCaption(std::stoi(argv[2]), std::stoi(argv[3]), std::stoi(argv[4]));
        gtk_widget_set_name(window, "caption");
    } else {
        window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
        GtkWidget* bar = gtk_header_bar_new();
        gtk_header_bar_set_show_close_button(GTK_HEADER_BAR(bar), TRUE);
        gtk_header_bar_set_title(GTK_HEADER_BAR(bar), titleOf(what));
        gtk_window_set_titlebar(GTK_WINDOW(window), bar);
        gtk_window_set_default_size(GTK_WINDOW(window), 640, 460);
        gtk_container_add(GTK_CONTAINER(window),
                          scrolling(what == "notes"      ? makeNotes()
                                    : what == "calendar" ? makeCalendar()
                                                         : makeDrawing(what)));
    }
    g_signal_connect(window, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
    gtk_widget_show_all(window);
    gtk_main();
    return 0;
}
