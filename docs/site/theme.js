// Before anything is drawn: the theme that the reader has chosen, else the system's.
document.documentElement.classList.add('scripted');
try {
    document.documentElement.dataset.theme = localStorage.getItem('theme') ?? 'system';
} catch {
    document.documentElement.dataset.theme = 'system';
}
