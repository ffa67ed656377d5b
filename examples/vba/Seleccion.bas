Attribute VB_Name = "Seleccion"
' El programa mas corto en VBA: una tabla de ADO, de la que se elige un articulo y en la que se busca. Se importan este
' modulo y las clases de su carpeta.
Option Explicit

Public Sub Elegir()
    Dim ficha As New Pantalla, articulos As New Tabla, rejilla As New Columnas, dialogos As Object
    Set dialogos = CreateObject("Tamvelo.ClsShowSerch")
    dialogos.ShowSelec ficha, articulos, ficha
    Debug.Print "Elegido: " & ficha.Text
    dialogos.ShowBuscar ficha, articulos, rejilla
    Debug.Print "Filtro: " & articulos.GetFilter("Filter")
End Sub
